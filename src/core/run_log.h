#pragma once

#include <string>
#include <string_view>

/// Appends a line to the run log `QBLINK.LOG` in the data folder: date yyyymmdd, time hh:mm of 24
/// hours, the message. The file is closed after the line. A failure is dropped: logging never stops
/// an export. The file is made readable for its owner only.
void gpQBLink_Log_writing(std::string_view message);

/// Appends a line to the trace `BRV.txt` of the program folder, without date and time. A failure is
/// dropped.
void gpBRV_Trace_writing(std::string_view line);

namespace core {

/// Full names of the log and of the trace.
std::string logFileName();
std::string traceFileName();
/// Makes the trace anew with its first line. @throws PlatformError when it cannot be written.
void startTrace(std::string_view line);

}  // namespace core
