#pragma once

namespace core {

/// The run of a store in Summary mode: settings, the quick setup window, then the report tools and
/// the posting of their files, in one pass for the range or one for each day. Ends the program
/// (platform::ProgramEnd); never returns otherwise. @throws what the steps let pass.
[[noreturn]] void runSummaryMode();

}  // namespace core
