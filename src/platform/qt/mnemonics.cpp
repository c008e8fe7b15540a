#include "platform/qt/mnemonics.h"

namespace platform {

namespace {

char plainLetter(QChar character) {
    const char letter = character.toLower().toLatin1();
    return letter >= 'a' && letter <= 'z' ? letter : '\0';
}

bool beginsWord(const QString& caption, qsizetype at) {
    return at == 0 || caption[at - 1] == ' ';
}

}  // namespace

QString withMnemonic(const QString& caption, char letter) {
    QString text;
    bool marked = letter == 0;
    for (const QChar character : caption) {
        if (!marked && plainLetter(character) == plainLetter(QLatin1Char(letter))) {
            text += '&';
            marked = true;
        }
        text += character;
        if (character == '&') {
            text += '&';
        }
    }
    return text;
}

void MnemonicPool::merge(const MnemonicPool& other) {
    taken_.insert(other.taken_.begin(), other.taken_.end());
}

char MnemonicPool::take(const QString& caption, From from) {
    const int rounds = from == From::anywhere ? 2 : 1;
    for (int round = 0; round < rounds; ++round) {
        for (qsizetype at = 0; at < caption.size(); ++at) {
            const char letter = plainLetter(caption[at]);
            const bool fits = letter != 0 && (round > 0 || beginsWord(caption, at));
            if (fits && taken_.insert(letter).second) {
                return letter;
            }
        }
    }
    return 0;
}

}  // namespace platform
