#pragma once

/// The driver manager's header, which on Windows wants the system's first.
#ifdef _WIN32
#include <windows.h>
#endif

#include <sql.h>
#include <sqlext.h>
