// Every family natively, on the platform stand-in: each function that reaches
// the system ends on the stand-in's one code (120) through its own error path,
// with its own log lines, under the sanitizers.
#include <gtest/gtest.h>
#include <tinyxml.h>

#include <string>

#include "engine/engine.h"
#include "functions/families.h"

namespace {

TEST(Families, EveryFamilyRunsOnTheStandIn) {
  const engine::FunctionRegistry registry = api::makeFunctionRegistry();
  engine::Engine engine{registry};
  TiXmlDocument document;
  document.Parse(R"(<s version="1.1">
      <iniGetValue path="C:\a.ini" section="s" key="k" var="ini" default="fallback"/>
      <iniSetValue path="C:\a.ini" section="s" key="k" value="v"/>
      <regRead root="HKEY_LOCAL_MACHINE" key="SOFTWARE\Contoso" value="Version" var="reg"/>
      <regWrite root="HKEY_CURRENT_CONFIG" key="x" value="v" data="-1" type="REG_DWORD"/>
      <serviceStart name="Spooler"/>
      <processKill name="app.exe"/>
      <dirCreate path="C:\new"/>
      <jsonOpen path="C:\a.json" handle="j"/>
      <xmlOpen path="C:\a.xml" handle="x"/>
    </s>)");
  ASSERT_TRUE(engine.prepare(document, {}));
  testing::internal::CaptureStdout();
  engine.run();
  const std::string log = testing::internal::GetCapturedStdout();
  EXPECT_EQ(engine.variables().get(L"ini"), L"fallback");
  EXPECT_EQ(engine.variables().get(L"error"), L"120");
  for (const char* line : {
           "iniSetValue function end with error. err:'120'",
           "RegRead function called for FFFFFFFF80000002\\SOFTWARE\\Contoso\\Version store to reg\n",
           "RegRead function end with error. err:'120'",
           "RegWrite function called for FFFFFFFF80000005\\x\\v. Data:'-1', type=4\n",
           "RegWrite function end with error. err:'120'",
           "serviceStart cannot open scm\n",
           "serviceStart function end with error. err:'120'",
           "processKill function end with success",  // no process is found, so none is ended
           "dirCreate function end with error. err:'120'",
           "jsonOpen failed opening the file\n",  // jsonOpen answers false instead
           "xmlOpen function end with error. err:'120'",
       })
    EXPECT_NE(log.find(line), std::string::npos) << line << "\nin:\n" << log;
  engine.reset();
}

}  // namespace
