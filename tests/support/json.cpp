#include "support/json.h"

#include <charconv>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace testing_support {

class JsonReader {
public:
    explicit JsonReader(std::string_view document) : rest_(document), size_(document.size()) {}

    Json document() {
        Json json = value();
        skipBlanks();
        if (!rest_.empty()) {
            fail("end");
        }
        return json;
    }

private:
    [[noreturn]] void fail(const std::string& expected) const {
        throw std::runtime_error(
            "JSON: " + expected + " expected at " + std::to_string(size_ - rest_.size())
        );
    }
    void skipBlanks() {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r\n"), rest_.size()));
    }
    bool take(std::string_view token) {
        skipBlanks();
        const bool found = rest_.starts_with(token);
        rest_.remove_prefix(found ? token.size() : 0);
        return found;
    }
    void expect(std::string_view token) {
        if (!take(token)) {
            fail(std::string(token));
        }
    }

    Json value() {
        Json json;
        if (take("{")) {
            json.kind_ = Json::Kind::object;
            sequence("}", [&] {
                expect("\"");
                std::string key = string();
                expect(":");
                json.members_.emplace_back(std::move(key), value());
            });
        } else if (take("[")) {
            json.kind_ = Json::Kind::array;
            sequence("]", [&] { json.items_.push_back(value()); });
        } else if (take("\"")) {
            json.kind_ = Json::Kind::text;
            json.text_ = string();
        } else if (take("true")) {
            json.kind_ = Json::Kind::boolean;
            json.truth_ = true;
        } else if (take("false")) {
            json.kind_ = Json::Kind::boolean;
        } else if (!take("null")) {
            json.kind_ = Json::Kind::number;
            json.text_ = numberText();
        }
        return json;
    }

    template <class Element>
    void sequence(std::string_view close, Element element) {
        if (take(close)) {
            return;
        }
        do {
            element();
        } while (take(","));
        expect(close);
    }

    std::string numberText() {
        const std::size_t length =
            std::min(rest_.find_first_not_of("+-.0123456789eE"), rest_.size());
        if (length == 0) {
            fail("a value");
        }
        std::string text(rest_.substr(0, length));
        rest_.remove_prefix(length);
        return text;
    }

    std::string string() {
        std::string text;
        while (!rest_.empty() && rest_.front() != '"') {
            const char next = rest_.front();
            rest_.remove_prefix(1);
            if (next == '\\') {
                escape(text);
            } else {
                text += next;
            }
        }
        expect("\"");
        return text;
    }

    void escape(std::string& text) {
        constexpr std::string_view kNames = "\"\\/bfnrt";
        constexpr std::string_view kValues = "\"\\/\b\f\n\r\t";
        if (rest_.empty()) {
            fail("an escape");
        }
        const char name = rest_.front();
        rest_.remove_prefix(1);
        if (name == 'u') {
            appendUtf8(text, codePoint());
        } else if (const std::size_t index = kNames.find(name); index != std::string_view::npos) {
            text += kValues[index];
        } else {
            fail("an escape");
        }
    }

    unsigned codePoint() {
        const unsigned first = hexDigits();
        if (first < 0xD800 || first > 0xDBFF) {
            return first;
        }
        expect("\\u");
        return 0x10000 + ((first - 0xD800) << 10U) + (hexDigits() - 0xDC00);
    }

    unsigned hexDigits() {
        unsigned number = 0;
        const std::string_view digits = rest_.substr(0, 4);
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
        if (error != std::errc() || end != digits.data() + 4) {
            fail("four hexadecimal digits");
        }
        rest_.remove_prefix(4);
        return number;
    }

    static void appendUtf8(std::string& text, unsigned character) {
        const auto put = [&text](unsigned bits) { text += static_cast<char>(bits); };
        if (character < 0x80) {
            put(character);
            return;
        }
        const unsigned tails = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
        constexpr unsigned kLeads[] = {0, 0xC0, 0xE0, 0xF0};
        put(kLeads[tails] | (character >> (6 * tails)));
        for (unsigned i = tails; i-- > 0;) {
            put(0x80U | ((character >> (6 * i)) & 0x3FU));
        }
    }

    std::string_view rest_;
    std::size_t size_;
};

namespace {

const Json& nothing() {
    static const Json json;
    return json;
}

void require(bool condition, const char* kind) {
    if (!condition) {
        throw std::runtime_error(std::string("JSON: value is no ") + kind);
    }
}

}  // namespace

bool Json::truth() const {
    require(kind_ == Kind::boolean, "boolean");
    return truth_;
}

double Json::number() const {
    require(kind_ == Kind::number, "number");
    return std::stod(text_);
}

std::int64_t Json::integer() const {
    require(kind_ == Kind::number, "number");
    return std::stoll(text_);
}

const std::string& Json::text() const {
    require(kind_ == Kind::text || kind_ == Kind::number, "text");
    return text_;
}

std::string Json::bytes() const {
    std::string result;
    const std::string& utf8 = text();
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        if (lead < 0x80) {
            result += utf8[i];
            continue;
        }
        require(lead <= 0xC3 && i + 1 < utf8.size(), "byte text");
        const auto tail = static_cast<unsigned char>(utf8[++i]);
        result += static_cast<char>(((lead & 0x03U) << 6U) | (tail & 0x3FU));
    }
    return result;
}

const Json& Json::operator[](std::string_view key) const {
    for (const Member& member : members_) {
        if (member.first == key) {
            return member.second;
        }
    }
    return nothing();
}

const Json& Json::operator[](std::size_t index) const {
    return index < items_.size() ? items_[index] : nothing();
}

Json parseJson(std::string_view document) {
    return JsonReader(document).document();
}

Json parseJsonFile(const std::string& path) {
    const std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("JSON: no file " + path);
    }
    std::ostringstream document;
    document << file.rdbuf();
    return parseJson(document.str());
}

}  // namespace testing_support
