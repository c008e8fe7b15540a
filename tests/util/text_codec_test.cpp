#include "util/text_codec.h"

#include <gtest/gtest.h>

TEST(TextCodec, carriesEveryByteThereAndBack) {
    for (int code = 0; code < 256; ++code) {
        const std::string byte(1, static_cast<char>(code));
        EXPECT_EQ(util::fromUtf8(util::toUtf8(byte)), byte) << code;
    }
    EXPECT_EQ(util::toUtf8("5 \x80 Caf\xE9"), "5 \xE2\x82\xAC Caf\xC3\xA9");
}

TEST(TextCodec, putsAMarkForWhatHasNoCounterpart) {
    struct Case {
        const char* given;
        const char* utf8;
        const char* text;
    };
    constexpr Case kCases[] = {
        {"a character of another alphabet", "a\xCE\xB1z", "a?z"},
        {"a character of four bytes", "a\xF0\x9F\x98\x80z", "a?z"},
        {"a byte that only goes on", "a\x80z", "a?z"},
        {"a character that is cut", "a\xE2\x82", "a??"},
        {"a character that is broken off by another", "\xE2\x82z", "??z"},
        {"a slash in more bytes than it needs", "\xC0\xAF", "??"},
        {"half of a pair", "\xED\xA0\x80", "???"},
    };
    for (const auto& [given, utf8, text] : kCases) {
        SCOPED_TRACE(given);
        EXPECT_EQ(util::fromUtf8(utf8), text);
    }
}
