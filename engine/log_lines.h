#pragma once
// The lines the engine logs itself: the end line of each function kind, the
// jumps into handlers and labels, and the framing of a run.
#include <span>

#include "engine/log_line.h"

namespace engine {

// End lines; the leading %s is the tag (or the subject the function names).
inline constexpr LogLine kErrorEnd{L"%s function end with %s. err:'%s'"};
inline constexpr LogLine kBoolEnd{L"%s function end with %s."};
inline constexpr LogLine kSubjectEnd{L"%s end with %s"};

inline constexpr LogLine kGoTo{L"GoTo label '%s'"};
inline constexpr LogLine kEnterOnErrorGoTo{L"Entering onErrorGoTo handler. err='%s'"};
inline constexpr LogLine kEnterOnFalse{L"Entering onFalse handler."};
inline constexpr LogLine kEnterOnTrue{L"Entering onTrue handler."};
inline constexpr LogLine kEnterOnSuccess{L"Entering onsuccess handler."};
// No full stop before "err=", unlike the other handlers: the program's
// established wording, which scripts and log readers match.
inline constexpr LogLine kEnterOnErrorSpec{L"Entering onerrorspec handler err='%s'"};
inline constexpr LogLine kEnterOnError{L"Entering onerror handler. err='%s'"};

inline constexpr LogLine kStarted{L"Started"};
inline constexpr LogLine kLoadingXml{L"Loading xml"};
inline constexpr LogLine kCommandLineParsed{L"Command line parsed, validate arguments"};
inline constexpr LogLine kPrepare{L"Prepare"};
inline constexpr LogLine kExecute{L"Execute"};
inline constexpr LogLine kStartExecuting{L"Start executing"};
inline constexpr LogLine kStopExecuting{L"Stop executing"};
inline constexpr LogLine kEnd{L"End"};
inline constexpr LogLine kFreeingLeak{L"Freeing leak: %p of type %d"};
inline constexpr LogLine kTraceIncomplete{
    L"Cannot write the trace file '%s'. Error:%d. It is incomplete from this line on"};
inline constexpr LogLine kOutOfMemory{L"The run ran out of memory"};
inline constexpr LogLine kCannotOpenJsonLog{L"Cannot open the JSON log '%s': %d"};

// Under /whatif: each change a call would make, then the total and the count by kind.
inline constexpr LogLine kWhatIf{L"What if: %s"};
inline constexpr LogLine kWhatIfTotal{L"What if: %u %s"};
inline constexpr LogLine kWhatIfKind{L"What if: %s %u"};

// The lines a run logs around and between its functions' own lines.
inline constexpr LogLine kFramingLines[] = {
    kGoTo,    kEnterOnErrorGoTo,  kEnterOnFalse, kEnterOnTrue, kEnterOnSuccess, kEnterOnErrorSpec, kEnterOnError,
    kStarted, kCommandLineParsed, kLoadingXml,   kPrepare,     kExecute,        kStartExecuting,   kStopExecuting,
    kEnd,     kFreeingLeak,       kTraceIncomplete, kOutOfMemory, kCannotOpenJsonLog, kWhatIf, kWhatIfTotal, kWhatIfKind};

}  // namespace engine
