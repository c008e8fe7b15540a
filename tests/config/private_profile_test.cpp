#include "config/private_profile.h"
#include "config_fixture.h"
#include "support/json.h"

#include <filesystem>
#include <functional>
#include <map>
#include <optional>

namespace {

using testing_support::Json;

/// Carries out one operation of the vectors on `file` and compares its result.
class Operations {
public:
    explicit Operations(std::string file) : file_(std::move(file)) {}

    void run(const Json& operation) const { kKinds.at(operation["op"].text())(*this, operation); }

private:
    using Kind = std::function<void(const Operations&, const Json&)>;

    void write(
        const Json& operation,
        const std::string& section,
        const std::optional<std::string>& key,
        const std::optional<std::string>& value
    ) const {
        const bool isDone = config::writePrivateProfileString(section, key, value, file_);
        EXPECT_EQ(isDone ? 1 : 0, operation["result"].integer());
    }

    [[nodiscard]] config::ProfileText read(
        const Json& operation,
        const std::optional<std::string>& section,
        const std::optional<std::string>& key
    ) const {
        const auto size = static_cast<std::size_t>(operation["size"].integer());
        config::ProfileText text = config::getPrivateProfileString(
            section, key, operation["default"].bytes(), size, file_
        );
        EXPECT_EQ(text.buffer.size(), size);
        EXPECT_EQ(text.length, static_cast<std::size_t>(operation["length"].integer()));
        return text;
    }

    static void expectList(const config::ProfileText& list, const Json& operation) {
        EXPECT_EQ(list.buffer.substr(0, list.length), operation["buffer"].bytes());
    }

    static const std::map<std::string, Kind> kKinds;

    std::string file_;
};

const std::map<std::string, Operations::Kind> Operations::kKinds = {
    {"write",
     [](const Operations& self, const Json& operation) {
         self.write(
             operation,
             operation["section"].bytes(),
             operation["key"].bytes(),
             operation["value"].bytes()
         );
     }},
    {"delete_key",
     [](const Operations& self, const Json& operation) {
         self.write(
             operation, operation["section"].bytes(), operation["key"].bytes(), std::nullopt
         );
     }},
    {"delete_section",
     [](const Operations& self, const Json& operation) {
         self.write(operation, operation["section"].bytes(), std::nullopt, std::nullopt);
     }},
    {"probe",
     [](const Operations& self, const Json& operation) {
         self.write(operation, "", std::nullopt, std::nullopt);
     }},
    {"read",
     [](const Operations& self, const Json& operation) {
         const auto text =
             self.read(operation, operation["section"].bytes(), operation["key"].bytes());
         EXPECT_EQ(text.buffer.substr(0, text.length), operation["text"].bytes());
     }},
    {"keys",
     [](const Operations& self, const Json& operation) {
         expectList(self.read(operation, operation["section"].bytes(), std::nullopt), operation);
     }},
    {"sections",
     [](const Operations& self, const Json& operation) {
         expectList(self.read(operation, std::nullopt, std::nullopt), operation);
     }},
};

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
        const Operations operations(scratch.file(name));
        for (const Json& operation : example["ops"].items()) {
            operations.run(operation);
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
