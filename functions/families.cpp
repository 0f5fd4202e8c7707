#include "functions/families.h"

namespace api {

engine::FunctionRegistry makeFunctionRegistry() {
  engine::FunctionRegistry registry;
  struct Family {
    const wchar_t* title;
    void (*registerFunctions)(engine::FunctionRegistry&);
  };
  static const Family families[] = {
      {L"Flow, variables and strings", base::registerFunctions},
      {L"Files, directories and downloads", files::registerFunctions},
      {L"Processes", processes::registerFunctions},
      {L"Services", services::registerFunctions},
      {L"Registry", registry::registerFunctions},
      {L"INI files", ini::registerFunctions},
      {L"JSON documents", json::registerFunctions},
      {L"XML documents", xml::registerFunctions},
  };
  for (const Family& family : families) {
    registry.beginFamily(family.title);
    family.registerFunctions(registry);
  }
  return registry;
}

}  // namespace api
