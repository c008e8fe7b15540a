#pragma once

#include "util/legacy_bool.h"

#include <cstdint>
#include <functional>
#include <string>

/// The folder that holds the point-of-sale configuration and the link's own files, with the number
/// of this station. Kept in the per-user settings under `AppLabel`, section "DATABASE".
class clsDataPath {
public:
    std::string Title = "Station and Data Path";
    std::string Station;
    std::string DataPath;
    std::string TestPath;
    std::string AppLabel;  ///< name in the per-user settings
    std::string DefaultStation;
    std::string DefaultDataPath;
    LegacyBool Network = kNo;  ///< the data folder lies on another machine
    LegacyBool DefaultNetwork = kNo;
    std::string StationPath;
    std::int32_t MaxStations = 50;
    std::string DefaultStationPath;
    LegacyBool StationPathEnabled = kNo;  ///< `Validate` looks at the station's folder too
    LegacyBool Cancelled = kNo;           ///< the operator left the window without a path
    std::string CheckFile;                ///< must be in the data folder; empty: not looked for
    std::string StationFile;  ///< name of the station's file, as "STA1.NUV"; set by `Validate`
    LegacyBool SupressFileCheck = kNo;  ///< `Validate` does not look for the station's file
    LegacyBool CreatePath = kNo;        ///< a missing folder may be made, if the operator agrees
    LegacyBool StationNumberEnabled = kNo;

    /// "Station 1 of 50".
    [[nodiscard]] std::string StationLabel() const;
    /// Outcome of the last `Validate`.
    [[nodiscard]] LegacyBool Valid() const { return valid_; }
    /// The field that `Validate` blames: "STATION", "STATIONPATH", "DATAPATH" or empty.
    [[nodiscard]] const std::string& FieldKey() const { return fieldKey_; }

    /// True when there is a file of that name.
    [[nodiscard]] LegacyBool gfb_FileExists(const std::string& name) const;  // NOLINT
    /// Writes the five stored values to the settings and the data path to the file of `gIni`, when
    /// that is open. The path is stored without a backslash at its end.
    /// @throws PlatformError when the settings cannot be written.
    void Save();
    /// Removes the five values from the settings.
    void Delete();
    /// Takes the five values from the settings, when `fromSettings`; a label that is given replaces
    /// `AppLabel`. @throws BasicError 13 when "NETWORK" holds no truth value.
    void Read(LegacyBool fromSettings, const std::string& label = {});
    /// Tests station and folders; sets `Valid` and `FieldKey`, tells the operator in a message box
    /// titled "Validation" what is wrong. May make a folder (`CreatePath`).
    void Validate();
    /// As gfbNUV_DataPath_open of nuvDataPath_Ops, with "C:\KV" as default path when none is given.
    /// The last switch has no effect.
    LegacyBool gfbNUV_DataPath_open(  // NOLINT
        LegacyBool ask,
        std::int32_t maxStations,
        const std::string& defaultPath = {},
        LegacyBool unused = kNo
    );
    /// As gfbNUV_DataPath_change of nuvDataPath_Ops.
    LegacyBool gfbNUV_DataPath_change();  // NOLINT
    /// Takes the values from the settings of the suite.
    void gpDataPathRead();

private:
    void fail(const std::string& fieldKey, const std::string& what, const std::string& remedy);
    void checkStation();
    void checkStationPath();
    void checkDataPath();
    void checkStationFile();
    void checkDataFile();

    LegacyBool valid_ = kNo;
    std::string fieldKey_;
};

/// The data path of this program.
extern clsDataPath gDataPath;

namespace config {

/// Name of the suite in the per-user settings.
inline constexpr char kAppLabel[] = "NUV Settings";

/// Shows the window in which the operator sets `gDataPath`, and returns when it was closed. Filled
/// in by the window itself; while it is empty the window counts as cancelled.
std::function<void()>& dataPathWindow();

/// Runs the window above; an empty one sets `gDataPath.Cancelled`.
void showDataPathWindow();

/// Puts `gDataPath`, `gIni` and the local mode back to their start values. The window stays.
void resetConfig();

}  // namespace config
