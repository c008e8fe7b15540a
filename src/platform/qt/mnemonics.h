#pragma once

#include <set>

#include <QString>

namespace platform {

/// The caption with "&" before the first occurrence of `letter`; other "&" are doubled, so that
/// they show.
QString withMnemonic(const QString& caption, char letter);

/// Gives the captions of one window letters that differ, as long as there are any.
class MnemonicPool {
public:
    enum class From : unsigned char { anywhere, wordBeginnings };
    /// A letter (lower case) of the caption that nobody has yet, beginnings of words first; 0 when
    /// all are taken.
    char take(const QString& caption, From from = From::anywhere);
    /// Takes the letters that another pool has given.
    void merge(const MnemonicPool& other);

private:
    std::set<char> taken_;
};

}  // namespace platform
