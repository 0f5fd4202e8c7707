#pragma once
// A what-if run (/whatif): every call that would change the machine is logged
// as "What if: <what it would do>" instead of made, and the run ends with the
// number of changes it would have made, by kind.
namespace engine {

void beginWhatIf();
// "What if: N changes" and a line per kind; nothing outside a what-if run.
void summarizeWhatIf();

}  // namespace engine
