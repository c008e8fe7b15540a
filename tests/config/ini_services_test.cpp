#include "config/clsINI_Services.h"
#include "config_fixture.h"

#include <filesystem>

class IniServices : public ConfigTest {
protected:
    using Names = clsINI_Services::Names;
    using Pairs = clsINI_Services::Pairs;

    void open(const std::string& bytes) {
        folder.write("NUV.INI", bytes);
        ini.File(folder.file("NUV.INI"));
        ASSERT_EQ(ini.FileOpen(), kYes);
    }

    clsINI_Services ini;
};

TEST_F(IniServices, opensANameThatCanBeWrittenAndMakesNothing) {
    ini.File(folder.file("NUV.INI"));
    EXPECT_EQ(ini.FileOpen(), kYes);
    EXPECT_EQ(ini.File(), folder.file("NUV.INI"));
    EXPECT_FALSE(folder.has("NUV.INI"));
    for (const std::string& name : {folder.file("missing\\NUV.INI"), std::string(), folder.str()}) {
        SCOPED_TRACE(name);
        ini.File(name);
        EXPECT_EQ(ini.FileOpen(), kNo);
        EXPECT_EQ(ini.File(), "");
    }
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(IniServices, doesNothingButReadADefaultWhileItIsNotOpen) {
    EXPECT_EQ(ini.WriteData("A", "k", "v"), kNo);
    EXPECT_EQ(ini.DeleteData("A"), kNo);
    EXPECT_EQ(ini.GetAllSections(), Names{""});
    EXPECT_EQ(ini.GetAllKeysValuesInSection("A"), Pairs(1));
    EXPECT_EQ(ini.FindValueInFile("v"), Pairs(1));
    EXPECT_EQ(ini.RenameKey("A", "k", "l"), kNo);
    EXPECT_EQ(ini.RenameSection("A", "B"), kNo);
    EXPECT_EQ(ini.getvalue("A", "k", "30  "), "30");
}

TEST_F(IniServices, listsAndFindsSectionsKeysAndValues) {
    open("[A]\r\nCash=Bank\r\nCheck=bank\r\n[Empty]\r\n[B]\r\nCASH=Till\r\n");
    EXPECT_EQ(ini.GetAllSections(), (Names{"A", "Empty", "B"}));
    EXPECT_EQ(ini.GetAllKeysInSection("a"), (Names{"Cash", "Check"}));
    EXPECT_EQ(ini.GetAllKeysInSection("Empty"), Names{""});
    EXPECT_EQ(ini.GetAllKeysValuesInSection("A"), (Pairs{{"Cash", "Bank"}, {"Check", "bank"}}));
    EXPECT_EQ(ini.FindKeyInFile("cash"), (Names{"A", "B"}));
    EXPECT_EQ(ini.FindKeyInFile("none"), Names{""});
    EXPECT_EQ(ini.FindKeyInSection("B", "Cash"), kYes);
    EXPECT_EQ(ini.FindKeyInSection("Empty", "Cash"), kNo);
    EXPECT_EQ(ini.FindValueInSection("A", "BANK"), (Names{"Cash", "Check"}));
    EXPECT_EQ(ini.FindValueInFile("till"), (Pairs{{"B", "CASH"}}));
    EXPECT_EQ(ini.FindValueInFile("none"), Pairs(1));

    open("[]\r\nCash=Bank\r\n[A]\r\nCash=Bank\r\n");
    EXPECT_EQ(ini.FindKeyInFile("cash"), Names{""});
}

TEST_F(IniServices, cutsValuesAndListsAtItsBuffer) {
    std::string bytes = "[A]\r\nlong=" + std::string(300, 'v') + "\r\n";
    for (int i = 0; i < 60; ++i) {
        bytes += "key" + std::to_string(1000 + i) + "=1\r\n";
    }
    bytes += "[B]\r\ncode0=a" + std::string(1, '\0') + "b\r\n";
    open(bytes);
    EXPECT_EQ(ini.getvalue("A", "long", ""), std::string(254, 'v'));
    EXPECT_EQ(ini.getvalue("B", "code0", ""), "a");
    const Names keys = ini.GetAllKeysInSection("A");
    EXPECT_EQ(keys.size(), 32U);
    EXPECT_EQ(keys.back(), "key1030");
}

TEST_F(IniServices, renamesSectionsAndKeysInOrder) {
    open("[Old]\r\na=1\r\nb=\r\n[Keep]\r\nc=3\r\n[Bare]\r\n");
    EXPECT_EQ(ini.RenameSection("old", "New"), kYes);
    EXPECT_EQ(ini.RenameSection("Bare", "Blank"), kYes);
    EXPECT_EQ(ini.RenameKey("Keep", "C", "d"), kYes);
    EXPECT_EQ(folder.read("NUV.INI"), "[Keep]\r\nd=3\r\n[New]\r\na=1\r\nb=\r\n[Blank]\r\n");
}

TEST_F(IniServices, tellsOfAFileThatCannotBeRead) {
    open("[A]\r\nk=v\r\n");
    std::filesystem::remove(folder.path() / "NUV.INI");
    std::filesystem::create_symlink("/proc/self/mem", folder.path() / "NUV.INI");
    EXPECT_EQ(ini.getvalue("A", "k", "dflt"), "");
    EXPECT_EQ(ini.WriteData("A", "k", "w"), kNo);
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_EQ(desktop.boxes[0].title, "INI Class");
    EXPECT_EQ(
        desktop.boxes[0].text, "Error Number: 75\r\nPath/File access error\r\nGet Value Class ini"
    );
}
