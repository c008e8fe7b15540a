#include "config/clsINI_Services.h"
#include "config/nuvDataPath_Ops.h"
#include "config/sm_SafeStub.h"
#include "config_fixture.h"
#include "core/sm_files.h"

#include <filesystem>

class DataPath : public ConfigTest {
protected:
    void store(const std::string& key, const std::string& value) {
        settings.save(config::kAppLabel, "DATABASE", key, value);
    }
    std::string stored(const std::string& key) const {
        return settings.get(config::kAppLabel, "DATABASE", key, "(none)");
    }
};

TEST_F(DataPath, comesFromTheSettingsWithoutItsSlash) {
    store("DATAPATH", " " + folder.str() + "\\ ");
    store("STATION", "7");
    folder.write("program/upper.alt", "table");
    EXPECT_EQ(gfbNUV_DataPath_open(kYes, 0, ""), kYes);
    EXPECT_EQ(gDataPath.DataPath, folder.str());
    EXPECT_EQ(gDataPath.StationLabel(), "Station 7 of 50");
    EXPECT_EQ(folder.read("upper.alt"), "table");

    folder.write("upper.alt", "the store's own");
    EXPECT_EQ(gfbNUV_DataPath_open(kYes, 0, ""), kYes);
    EXPECT_EQ(folder.read("upper.alt"), "the store's own");
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(DataPath, isAskedForWhenTheStoredOneIsNotThere) {
    store("DATAPATH", folder.file("gone"));
    config::dataPathWindow() = [this] {
        EXPECT_EQ(gDataPath.DefaultDataPath, "C:\\KV");
        EXPECT_EQ(gDataPath.CreatePath, kYes);
        EXPECT_EQ(gDataPath.StationNumberEnabled, kYes);
        gDataPath.DataPath = folder.str();
    };
    EXPECT_EQ(gDataPath.gfbNUV_DataPath_open(kYes, 51), kYes);
    config::dataPathWindow() = nullptr;
    EXPECT_EQ(gDataPath.MaxStations, 51);
    EXPECT_EQ(desktop.yields, 1);
    EXPECT_EQ(
        desktop.boxTexts(),
        (std::vector<std::string>{
            "Data Path Not Found.\r\n\r\nUse the Browse method to find a valid path.",
            "A path to the NUV Data Files has not been defined\r\n\r\n"
            "Do you want to define it now?",
        })
    );
}

TEST_F(DataPath, staysUndefinedWhenNobodyDefinesIt) {
    struct Case {
        const char* given;
        const char* network;
        LegacyBool ask;
        platform::BoxAnswer answer;
        std::size_t boxes;
    };
    constexpr Case kCases[] = {
        {"the operator says No", "False", kYes, platform::BoxAnswer::no, 1},
        {"the window is left without a path", "", kYes, platform::BoxAnswer::yes, 1},
        {"nobody may be asked", "False", kNo, platform::BoxAnswer::yes, 0},
        {"the network is down: no question, only the message",
         "True",
         kYes,
         platform::BoxAnswer::ok,
         1},
    };
    for (const auto& [given, network, ask, answer, boxes] : kCases) {
        SCOPED_TRACE(given);
        desktop.boxes.clear();
        desktop.otherwise = answer;
        store("NETWORK", network);
        EXPECT_EQ(gfbNUV_DataPath_open(ask, 0, ""), kNo);
        EXPECT_EQ(desktop.boxes.size(), boxes);
    }
    EXPECT_EQ(desktop.boxes[0].title, "Network Not Found");
    EXPECT_EQ(
        desktop.boxes[0].text,
        "The network is currently down or is not set up properly. "
        "Please contact your network administrator for help."
    );
}

TEST_F(DataPath, isSavedReadAndDeleted) {
    folder.write("NUV.INI", "[MISCELLANEOUS]\r\nDatapath=old\r\n");
    gIni.File(folder.file("NUV.INI"));
    gDataPath.AppLabel = config::kAppLabel;
    gDataPath.DataPath = "D:\\Caf\xE9\\";
    gDataPath.StationPath = "D:\\Station\\";
    gDataPath.Network = kYes;
    gDataPath.Save();
    EXPECT_EQ(folder.read("NUV.INI"), "[MISCELLANEOUS]\r\nDatapath=D:\\Caf\xE9\r\n");
    EXPECT_EQ(stored("NETWORK"), "True");

    gIni = {};  // without its file the settings get the path all the same
    store("DATAPATH", "gone");
    gDataPath.Save();
    EXPECT_TRUE(desktop.boxes.empty());

    gDataPath = {};
    gpDataPathRead();
    EXPECT_EQ(gDataPath.DataPath, "D:\\Caf\xE9");
    EXPECT_EQ(gDataPath.StationPath, "D:\\Station\\");
    EXPECT_EQ(gDataPath.Network, kYes);

    gDataPath.Delete();
    for (const char* const key : {"NETWORK", "STATION", "STATIONPATH", "DATAPATH", "TESTDATA"}) {
        EXPECT_EQ(stored(key), "(none)") << key;
    }
}

TEST_F(DataPath, isBlamedForTheFirstThingThatIsWrong) {
    folder.write("station/STA2.NUV", "");
    folder.write("MAIN.DAT", "");
    struct Case {
        const char* given;
        std::function<void()> change;
        const char* fieldKey;
        const char* firstLine;  ///< empty: valid
    };
    const Case cases[] = {
        {"all is well", [] {}, "", ""},
        {"a station too high",
         [] { gDataPath.Station = "51"; },
         "STATION",
         "Station 51 Not Valid."},
        {"no station folder",
         [] { gDataPath.StationPath = "/nowhere"; },
         "STATIONPATH",
         "Station Path Not Found."},
        {"no data folder",
         [] { gDataPath.DataPath = "/nowhere"; },
         "DATAPATH",
         "Data Path Not Found."},
        {"no station file",
         [] { gDataPath.Station = "3"; },
         "STATION",
         "Station 3 not in Station Path."},
        {"no station file, which nobody looks for",
         [] {
             gDataPath.Station = "3";
             gDataPath.SupressFileCheck = kYes;
         },
         "",
         ""},
        {"no data file",
         [] { gDataPath.CheckFile = "COMMON.DAT"; },
         "DATAPATH",
         "Primary Data File Not Found."},
        {"a data file in other case", [] { gDataPath.CheckFile = "Main.dat"; }, "", ""},
    };
    for (const auto& [given, change, fieldKey, firstLine] : cases) {
        SCOPED_TRACE(given);
        desktop.boxes.clear();
        gDataPath = {};
        gDataPath.Station = "2";
        gDataPath.DataPath = folder.str();
        gDataPath.StationPath = folder.file("station");
        gDataPath.StationPathEnabled = kYes;
        change();
        gDataPath.Validate();
        EXPECT_EQ(gDataPath.FieldKey(), fieldKey);
        EXPECT_EQ(gDataPath.Valid(), legacyBool(*firstLine == '\0'));
        const std::string text = desktop.boxes.empty() ? "" : desktop.boxes[0].text;
        EXPECT_EQ(text.substr(0, text.find('\r')), firstLine);
        EXPECT_NE(gDataPath.Station, "51");  // it is the first again
    }
}

TEST_F(DataPath, isMadeWhenTheOperatorAgrees) {
    gDataPath.CreatePath = kYes;
    gDataPath.DataPath = folder.file("new\\");
    gDataPath.Validate();
    EXPECT_EQ(gDataPath.Valid(), kYes);
    EXPECT_TRUE(std::filesystem::is_directory(folder.path() / "new"));

    gDataPath.DataPath = folder.file("gone\\deep");
    gDataPath.Validate();
    EXPECT_EQ(gDataPath.Valid(), kNo);
    EXPECT_EQ(
        desktop.boxTexts(),
        (std::vector<std::string>{
            "Data Path Does Not Exist\r\n\r\nDo you want to create it?",
            "Data Path Does Not Exist\r\n\r\nDo you want to create it?",
            "Unable To Create Path",
            "Data Path Not Found.\r\n\r\nUse the Browse method to find a valid path.",
        })
    );
}

TEST_F(DataPath, isWaitedForWhileTheServerIsAway) {
    // Given a folder that is away until the second retry
    gDataPath.DataPath = folder.file("server");
    desktop.answers = {platform::BoxAnswer::yes, platform::BoxAnswer::no};
    // When, then
    EXPECT_EQ(gfbServer_Safe(), kNo);
    EXPECT_EQ(desktop.boxes.size(), 2U);
    EXPECT_EQ(
        desktop.boxes[0].text, "Server not found. Check Server and Network Connections.\r\n Retry?"
    );

    desktop.operatorThere = false;  // the end of an operator's script is no endless loop
    EXPECT_EQ(gfbServer_Safe(), kNo);

    std::filesystem::create_directory(folder.path() / "server");
    EXPECT_EQ(gfbServer_Safe(), kYes);

    gDataPath.DataPath = "C:\\nuvsafe";
    EXPECT_EQ(gfbServer_Safe(), kNo);
    EXPECT_TRUE(config::localMode());
    EXPECT_EQ(gfbServer_Safe(), kYes);
    EXPECT_EQ(desktop.boxes.size(), 3U);
}

TEST_F(DataPath, canBeChangedInItsWindow) {
    EXPECT_EQ(gfbNUV_DataPath_change(), kNo);  // there is no window
    config::dataPathWindow() = [] {};
    EXPECT_EQ(gfbNUV_DataPath_change(), kYes);
    EXPECT_EQ(gDataPath.AppLabel, "NUV Settings");
    config::dataPathWindow() = [] { gDataPath.Cancelled = kYes; };
    EXPECT_EQ(gfbNUV_DataPath_change(), kNo);
    config::dataPathWindow() = nullptr;
}

TEST_F(DataPath, filesAreFoundAndDeletedWithoutErrors) {
    folder.write("a.txt", "");
    EXPECT_EQ(gfbFile_Exists(folder.file("A.TXT ")), kYes);
    gpFile_Delete(folder.file("a.txt"));
    gpFile_Delete(folder.file("a.txt"));
    EXPECT_EQ(gfbFile_Exists(folder.file("a.txt")), kNo);
    EXPECT_EQ(gfbFile_Exists(""), kNo);
    EXPECT_EQ(gfsDrive_remote("z"), "Drive Letter Not Found");
    EXPECT_EQ(gfsDrive_remote(""), "Drive Letter Not Found");
}
