#include "platform/system/native_files.h"
#include "support/temp_folder.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Number of the PlatformError that `body` throws; 0: none.
int errorOf(const std::function<void()>& body) {
    try {
        body();
        return 0;
    } catch (const platform::PlatformError& error) {
        return error.number();
    }
}

mode_t modeOf(const std::filesystem::path& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 0777U : 0;
}

/// Files of this process may not grow beyond `bytes` while this lives: a disk that is full.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) {
        handler_ = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    FullDisk(FullDisk&&) = delete;
    FullDisk& operator=(FullDisk&&) = delete;

private:
    rlimit before_{};
    void (*handler_)(int) = nullptr;
};

}  // namespace

class NativeFiles : public testing::Test {
protected:
    std::size_t entries() const {
        const std::filesystem::directory_iterator all(folder.path());
        return static_cast<std::size_t>(std::distance(begin(all), end(all)));
    }

    testing_support::TempFolder folder;
    platform::NativeFiles files{folder.file("program\\")};
};

TEST_F(NativeFiles, takeTheNamesOfTheSuite) {
    folder.write("export/Summary20240131.txt", "day");
    std::filesystem::create_directory(folder.path() / "Caf\xC3\xA9");
    folder.write(
        "Caf\xC3\xA9/Stra\xC3\x9F"
        "e.txt",
        "western"
    );
    struct Case {
        const char* given;
        const char* name;
        const char* bytes;
    };
    constexpr Case kCases[] = {
        {"its own case", "export\\Summary20240131.txt", "day"},
        {"another case", "EXPORT\\SUMMARY20240131.TXT", "day"},
        {"a blank at the end", "export\\Summary20240131.txt ", "day"},
        {"points and blanks at the ends", "export. \\Summary20240131.txt. .", "day"},
        {"two backslashes", "export\\\\Summary20240131.txt", "day"},
        {"slashes", "export/Summary20240131.txt", "day"},
        {"a step back", "export\\..\\export\\Summary20240131.txt", "day"},
        {"letters of the code page",
         "caf\xC9\\STRA\xDF"
         "E.txt",
         "western"},
    };
    for (const auto& [given, name, bytes] : kCases) {
        SCOPED_TRACE(given);
        EXPECT_TRUE(files.fileExists(folder.file(name)));
        EXPECT_EQ(files.read(folder.file(name)), bytes);
    }
    EXPECT_TRUE(files.folderExists(folder.file("Export\\")));
    EXPECT_FALSE(files.fileExists(folder.file("export")));
    EXPECT_FALSE(files.folderExists("C:\\KV"));
    EXPECT_FALSE(files.fileExists(""));
    EXPECT_FALSE(files.folderExists(std::string(3, '\0')));
}

TEST_F(NativeFiles, prefersTheNameInItsOwnCase) {
    folder.write("a.txt", "small");
    folder.write("A.TXT", "capital");
    EXPECT_EQ(files.read(folder.file("a.txt")), "small");
    EXPECT_EQ(files.read(folder.file("A.TXT")), "capital");
    EXPECT_EQ(files.read(folder.file("A.txt")), "capital");
}

TEST_F(NativeFiles, failWithTheNumbersOfTheSuite) {
    folder.write("file", "x");
    folder.write("marked", "x");
    chmod((folder.path() / "marked").c_str(), 0444);
    folder.write("huge", "");
    std::filesystem::resize_file(folder.path() / "huge", (64U << 20U) + 1);
    std::filesystem::create_directory(folder.path() / "closed");
    chmod((folder.path() / "closed").c_str(), 0555);
    struct Case {
        const char* given;
        std::function<void()> body;
        int number;
    };
    const std::string deep = folder.file("gone\\file");
    const Case cases[] = {
        {"no name", [this] { files.write(" ", ""); }, 52},
        {"a code 0", [this] { files.write(std::string("a\0b", 3), ""); }, 52},
        {"a name too long", [this] { files.append(folder.file(std::string(300, 'n')), ""); }, 52},
        {"no file", [this] { static_cast<void>(files.read(folder.file("none"))); }, 53},
        {"no file to remove", [this] { files.remove(folder.file("none")); }, 53},
        {"no file to copy", [this] { files.copy(folder.file("none"), folder.file("x")); }, 53},
        {"no folder", [&] { files.write(deep, ""); }, 76},
        {"no folder to read in", [&] { static_cast<void>(files.read(deep)); }, 76},
        {"a file as folder", [this] { files.append(folder.file("file\\x"), ""); }, 76},
        {"no folder to list", [this] { (void)files.list(folder.file("gone"), "*"); }, 76},
        {"no folder with folders", [this] { (void)files.folders(folder.file("gone")); }, 76},
        {"a folder that is there", [this] { files.makeFolder(folder.str()); }, 75},
        {"a folder as file", [this] { static_cast<void>(files.read(folder.str())); }, 75},
        {"a file too large", [this] { static_cast<void>(files.read(folder.file("huge"))); }, 75},
        {"a read-only file", [this] { files.write(folder.file("marked"), "y"); }, 75},
        {"the same, append", [this] { files.append(folder.file("marked"), "y"); }, 75},
        {"the same, truncate", [this] { files.truncate(folder.file("marked"), true); }, 75},
        {"the same, remove", [this] { files.remove(folder.file("marked")); }, 75},
        {"a read-only folder", [this] { files.write(folder.file("closed\\x"), "y"); }, 75},
        {"a full disk", [this] { files.write("/dev/full", "y"); }, 61},
        {"a full disk, append", [this] { files.append("/dev/full", "y"); }, 61},
    };
    for (const auto& [given, body, number] : cases) {
        EXPECT_EQ(errorOf(body), number) << given;
    }
    EXPECT_EQ(folder.read("marked"), "x");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST_F(NativeFiles, knowWhatCanBeWrittenAndChangeNothing) {
    folder.write("marked", "x");
    chmod((folder.path() / "marked").c_str(), 0444);
    folder.write("file", "x");
    EXPECT_TRUE(files.isWritable(folder.file("FILE ")));
    EXPECT_TRUE(files.isWritable(folder.file("new")));
    EXPECT_FALSE(files.isWritable(folder.file("marked")));
    EXPECT_FALSE(files.isWritable(folder.file("gone\\new")));
    EXPECT_FALSE(files.isWritable(folder.str()));
    EXPECT_FALSE(files.isWritable(""));
    EXPECT_EQ(entries(), 2U);
}

TEST_F(NativeFiles, areReplacedAsAWhole) {
    folder.write("a.ini", "old");
    chmod((folder.path() / "a.ini").c_str(), 0604);
    std::filesystem::create_symlink("a.ini", folder.path() / "link");
    {
        const FullDisk disk(8);
        EXPECT_EQ(errorOf([this] { files.write(folder.file("a.ini"), "much too long"); }), 61);
        EXPECT_EQ(errorOf([this] { files.write(folder.file("b.ini"), "much too long"); }), 61);
    }
    EXPECT_EQ(folder.read("a.ini"), "old");
    EXPECT_FALSE(folder.has("b.ini"));
    files.write(folder.file("link"), "new");
    EXPECT_EQ(folder.read("a.ini"), "new");
    EXPECT_EQ(modeOf(folder.path() / "a.ini"), 0604U);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path() / "link"));
    EXPECT_EQ(entries(), 2U);
}

TEST_F(NativeFiles, areClearedOfWhatDeadWritersLeft) {
    const pid_t dead = fork();
    if (dead == 0) {
        _exit(0);
    }
    waitpid(dead, nullptr, 0);
    const auto before = [](int hours) {
        return std::filesystem::file_time_type::clock::now() - std::chrono::hours(hours);
    };
    struct Case {
        const char* given;
        std::string name;
        int hours;
        bool stays;
    };
    const std::string ofDead = std::to_string(dead);
    const Case cases[] = {
        {"a dead writer's", ".brevane-" + ofDead + "-1.tmp", 2, false},
        {"perhaps of another computer's writer", ".brevane-" + ofDead + "-2.tmp", 0, true},
        {"a living writer's", ".brevane-" + std::to_string(getpid()) + "-0.tmp", 2, true},
        {"somebody else's", ".other-" + ofDead + "-1.tmp", 2, true},
        {"without a number", ".brevane-.tmp", 2, true},
    };
    for (const Case& row : cases) {
        folder.write(row.name, "x");
        std::filesystem::last_write_time(folder.path() / row.name, before(row.hours));
    }
    files.write(folder.file("file"), "x");
    for (const Case& row : cases) {
        EXPECT_EQ(folder.has(row.name), row.stays) << row.given;
    }
    EXPECT_TRUE(folder.has("file"));
}

TEST_F(NativeFiles, areClosedToStrangers) {
    const mode_t before = umask(0);
    files.write(folder.file("written"), "x");
    files.append(folder.file("appended"), "x");
    files.truncate(folder.file("secret"), true);
    files.makeFolder(folder.file("made"));
    umask(before);
    folder.write("open", "x");
    chmod((folder.path() / "open").c_str(), 0666);
    files.truncate(folder.file("open"), true);
    EXPECT_EQ(modeOf(folder.path() / "written"), 0640U);
    EXPECT_EQ(modeOf(folder.path() / "appended"), 0640U);
    EXPECT_EQ(modeOf(folder.path() / "secret"), 0600U);
    EXPECT_EQ(modeOf(folder.path() / "made"), 0770U);
    EXPECT_EQ(modeOf(folder.path() / "open"), 0600U);
    EXPECT_EQ(folder.read("open"), "");
}

TEST_F(NativeFiles, areCopiedAppendedAndListed) {
    files.append(folder.file("NUVDATA2.mdf"), "one");
    files.append(folder.file("nuvdata2.MDF"), " two");
    files.copy(folder.file("NUVDATA2.mdf"), folder.file("nuvdata1.MDF"));
    folder.write("NUVDATA.ldf", "");
    folder.write("NUVDATA3.mdf/inside", "");
    using Names = std::vector<std::string>;
    EXPECT_EQ(files.read(folder.file("nuvdata1.mdf")), "one two");
    EXPECT_EQ(files.list(folder.str(), "NUVDATA*.mdf"), (Names{"nuvdata1.MDF", "NUVDATA2.mdf"}));
    EXPECT_EQ(files.list(folder.str(), "nuvdata?.m*f").size(), 2U);
    EXPECT_EQ(files.list(folder.str(), "*.*").size(), 3U);
    EXPECT_EQ(files.list(folder.str(), "none*"), Names{});
    folder.write("books/inside", "");
    folder.write(".cache/inside", "");
    EXPECT_EQ(files.folders(folder.str()), (Names{"books", "NUVDATA3.mdf"}));
    EXPECT_EQ(files.folders(folder.file("BOOKS")), Names{});
    files.remove(folder.file("NUVDATA1.mdf"));
    EXPECT_FALSE(folder.has("nuvdata1.MDF"));
}

TEST_F(NativeFiles, haveAFolderForTraces) {
    const std::string program = folder.file("program");
    EXPECT_EQ(files.programFolder(), program);
    std::filesystem::create_directory(folder.path() / "program");
    EXPECT_EQ(files.traceFolder(), program);
    chmod((folder.path() / "program").c_str(), 0555);
    const std::string state = (folder.path() / "state").string();
    setenv("XDG_STATE_HOME", state.c_str(), 1);
    EXPECT_EQ(files.traceFolder(), state + "/brevane");
    EXPECT_TRUE(files.folderExists(state + "\\brevane"));
    unsetenv("XDG_STATE_HOME");

    setenv("BREVANE_PROGRAM_FOLDER", "/opt/link/", 1);
    EXPECT_EQ(platform::NativeFiles().programFolder(), "/opt/link");
    unsetenv("BREVANE_PROGRAM_FOLDER");
    EXPECT_TRUE(platform::NativeFiles().folderExists(platform::NativeFiles().programFolder()));
    EXPECT_FALSE(files.driveRemote('Z').has_value());
}
