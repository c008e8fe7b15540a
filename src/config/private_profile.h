#pragma once

#include <cstddef>
#include <optional>
#include <string>

/// The private profile calls of the suite's platform, on the bytes of the file port. Each call
/// works on the file as it lies on the disk. Names are compared without letter case and without
/// blanks and tabs at both ends.
namespace config {

/// What a reading call left in its buffer.
struct ProfileText {
    std::string buffer;      ///< all of the buffer; code 0 behind the text
    std::size_t length = 0;  ///< characters that the call returned
};

/// Reads one value into a buffer of `size` characters; without a key the names of the section's
/// keys, without a section the names of all sections, each followed by a code 0. A list that does
/// not fit returns `size` - 2. The default (without blanks at its end) stands for what is missing.
/// A file that is not there reads as an empty one.
/// @throws PlatformError when the file is there and cannot be read.
ProfileText getPrivateProfileString(
    const std::optional<std::string>& section,
    const std::optional<std::string>& key,
    const std::string& defaultValue,
    std::size_t size,
    const std::string& file
);

/// Writes one value; without a value removes the key, without a key the section. Lines that are not
/// concerned stay byte for byte. An empty section without key and value only asks whether the file
/// can be used. Makes the file, never its folder.
/// @return false when the file cannot be written; it is then as it was.
bool writePrivateProfileString(
    const std::string& section,
    const std::optional<std::string>& key,
    const std::optional<std::string>& value,
    const std::string& file
);

}  // namespace config
