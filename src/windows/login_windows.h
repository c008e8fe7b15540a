#pragma once

#include "ui/form.h"

#include <string_view>

/// What the two windows of the login share.
namespace windows {

/// Where the user ID of the last login stands in the per-user settings.
inline constexpr char kLoginApplication[] = "NUV Settings";
inline constexpr char kLoginSection[] = "Login";
inline constexpr char kLastUserKey[] = "User ID";

/// Lets a login that asks for a new password open `frmPasswordEnter`.
void installPasswordWindow();

/// Overwrites the text of a field and leaves it empty.
void wipeField(ui::Form& window, std::string_view field);

}  // namespace windows
