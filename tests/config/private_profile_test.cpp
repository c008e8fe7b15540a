#include "config/private_profile.h"
#include "config_fixture.h"
#include "support/json.h"

#include <filesystem>
#include <optional>

namespace {

using testing_support::Json;

/// Carries out one operation of the vectors on `file` and compares its result. Which of section,
/// key and value it has is what makes its kind; the one that has a size reads.
void run(const Json& operation, const std::string& file) {
    const auto given = [&](const char* member) {
        return operation.has(member) ? std::optional(operation[member].bytes()) : std::nullopt;
    };
    if (!operation.has("size")) {
        const std::string section = given("section").value_or("");
        const bool isDone =
            config::writePrivateProfileString(section, given("key"), given("value"), file);
        EXPECT_EQ(isDone ? 1 : 0, operation["result"].integer());
        return;
    }
    const auto size = static_cast<std::size_t>(operation["size"].integer());
    const config::ProfileText text = config::getPrivateProfileString(
        given("section"), given("key"), operation["default"].bytes(), size, file
    );
    EXPECT_EQ(text.buffer.size(), size);
    EXPECT_EQ(text.length, static_cast<std::size_t>(operation["length"].integer()));
    const char* const result = operation.has("text") ? "text" : "buffer";
    EXPECT_EQ(text.buffer.substr(0, text.length), operation[result].bytes());
}

std::optional<std::string> bytesOf(const Json& text) {
    return text.isNull() ? std::nullopt : std::optional(text.bytes());
}

void expectFinal(const Json& example, const std::optional<std::string>& left) {
    if (example["compare"].text() != "bytes") {
        return;
    }
    std::vector<std::optional<std::string>> allowed = {bytesOf(example["final"])};
    for (const Json& other : example["final_also"].items()) {
        allowed.push_back(bytesOf(other));
    }
    EXPECT_NE(std::find(allowed.begin(), allowed.end(), left), allowed.end())
        << left.value_or("no file");
}

}  // namespace

class PrivateProfile : public ConfigTest {};

TEST_F(PrivateProfile, givesTheObservedResults) {
    const Json cases = testing_support::parseJsonFile(BREVANE_TEST_DATA "/ini.json");
    EXPECT_EQ(cases.items().size(), 96U);
    for (const Json& example : cases.items()) {
        SCOPED_TRACE(example["id"].text() + " " + example["title"].text());
        const testing_support::TempFolder scratch;
        const bool hasFolder = example["file"]["folder"].text() == "present";
        const std::string name = hasFolder ? "QBLINK.NUV" : "missing\\QBLINK.NUV";
        const auto start = bytesOf(example["file"]["start"]);
        if (start) {
            scratch.write(name, *start);
        }
        if (example["file"]["readonly"].truth()) {
            std::filesystem::permissions(scratch.path() / name, std::filesystem::perms::owner_read);
        }
        for (const Json& operation : example["ops"].items()) {
            run(operation, scratch.file(name));
        }
        const bool isThere = hasFolder && scratch.has(name);
        const auto left = isThere ? std::optional(scratch.read(name)) : std::nullopt;
        expectFinal(example, left);
        for (const Json& text : example["keeps"].items()) {
            EXPECT_NE(left.value_or("").find(text.bytes()), std::string::npos) << text.text();
        }
    }
}

TEST_F(PrivateProfile, leavesLinesThatAreNotConcernedAsTheyStand) {
    folder.write("a.ini", "loose\n[A]\n k = \"1\" \n; note\n\n[B]\nx=1\n");
    const std::string file = folder.file("a.ini");
    EXPECT_TRUE(config::writePrivateProfileString("A", "new", "2", file));
    EXPECT_TRUE(config::writePrivateProfileString("a", "K", "\"1\"", file));
    EXPECT_EQ(folder.read("a.ini"), "loose\n[A]\n k = \"1\" \n; note\nnew=2\n\n[B]\nx=1\n");
}
