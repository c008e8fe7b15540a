#include "core/sm_files.h"

#include "platform/ports/platform.h"
#include "util/conversions.h"

LegacyBool gfbFile_Exists(const std::string& fileName) {
    bool exists = false;
    platform::ignoringErrors([&] { exists = platform::files().fileExists(fileName); });
    return legacyBool(exists);
}

void gpFile_Delete(const std::string& fileName) {
    if (gfbFile_Exists(fileName) != kNo) {
        platform::ignoringErrors([&] { platform::files().remove(fileName); });
    }
}

std::string gfsDrive_remote(const std::string& driveLetter) {
    std::string remote = "Drive Letter Not Found";
    const std::string letter = util::upper(driveLetter);
    if (!letter.empty()) {
        platform::ignoringErrors([&] {
            remote = platform::files().driveRemote(letter.front()).value_or(remote);
        });
    }
    return remote;
}
