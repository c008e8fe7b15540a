#pragma once

#include "util/legacy_bool.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

/// One settings file (`NUV.INI`, `station.ini`, `QBLINK.NUV`): sections of keys and values. Nothing
/// of its content is kept here; each call reads or writes the file. Values, and the lists of
/// sections and keys, are cut at 254 characters. Letter case of section and key names does not
/// matter. A failure is told in a message box titled "INI Class" and gives the empty or false
/// result. All operations but `getvalue` do nothing while `FileOpen()` is false.
class clsINI_Services {
public:
    /// Names of sections or keys; one empty entry when there are none.
    using Names = std::vector<std::string>;
    /// Rows of two columns; one row of empty texts when there are none.
    using Pairs = std::vector<std::array<std::string, 2>>;

    /// Points the object at a file that can be written, or made in an existing folder; makes
    /// nothing. A file that cannot be used leaves the name empty and `FileOpen()` false.
    void File(const std::string& name);
    [[nodiscard]] const std::string& File() const { return name_; }
    [[nodiscard]] LegacyBool FileOpen() const { return isOpen_; }

    /// Writes one value; makes file and section when they are missing. kNo when the file cannot be
    /// written (the disk is full, ...): the file is then as it was.
    LegacyBool
    WriteData(const std::string& section, const std::string& key, const std::string& value);
    /// Removes the key when there is no value, the section when there is no key. Removing what is
    /// not there succeeds.
    LegacyBool DeleteData(
        const std::string& section,
        const std::optional<std::string>& key = std::nullopt,
        const std::optional<std::string>& value = std::nullopt
    );
    [[nodiscard]] Names GetAllSections() const;
    [[nodiscard]] Names GetAllKeysInSection(const std::string& section) const;
    /// Column 0 key, column 1 value.
    [[nodiscard]] Pairs GetAllKeysValuesInSection(const std::string& section) const;
    /// The value, or the default without blanks at its end when file, section or key is missing.
    [[nodiscard]] std::string getvalue(
        const std::string& section, const std::string& key, const std::string& defaultValue
    ) const;
    /// The sections that hold the key.
    [[nodiscard]] Names FindKeyInFile(const std::string& key) const;
    [[nodiscard]] LegacyBool
    FindKeyInSection(const std::string& section, const std::string& key) const;
    /// The keys of the section that hold the value; letter case of the value does not matter.
    [[nodiscard]] Names
    FindValueInSection(const std::string& section, const std::string& value) const;
    /// Column 0 section, column 1 key.
    [[nodiscard]] Pairs FindValueInFile(const std::string& value) const;
    /// Moves keys and values, in order, to a new section; kNo when the old one stays.
    LegacyBool RenameSection(const std::string& oldSection, const std::string& newSection);
    LegacyBool
    RenameKey(const std::string& section, const std::string& oldKey, const std::string& newKey);

private:
    std::string name_;
    LegacyBool isOpen_ = kNo;
};

/// The settings file of the suite: `NUV.INI` in the data folder, or `station.ini` in the program
/// folder for a moment.
extern clsINI_Services gIni;
