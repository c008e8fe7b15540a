#include "support/json.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

namespace testing_support {

/// Builds the values as the library's parser comes to them; numbers keep their digits.
class JsonReader : public nlohmann::json_sax<nlohmann::json> {
public:
    Json document() { return std::move(root_); }

    bool null() override { return put(Json::Kind::null, {}); }
    bool boolean(bool value) override {
        add(Json::Kind::boolean).truth_ = value;
        return true;
    }
    bool number_integer(number_integer_t value) override {
        return put(Json::Kind::number, std::to_string(value));
    }
    bool number_unsigned(number_unsigned_t value) override {
        return put(Json::Kind::number, std::to_string(value));
    }
    bool number_float(number_float_t, const string_t& digits) override {
        return put(Json::Kind::number, digits);
    }
    bool string(string_t& value) override { return put(Json::Kind::text, value); }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override { return open(Json::Kind::object); }
    bool start_array(std::size_t) override { return open(Json::Kind::array); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }
    bool key(string_t& name) override {
        key_ = name;
        return true;
    }
    bool parse_error(std::size_t place, const std::string&, const nlohmann::detail::exception& why)
        override {
        throw std::runtime_error("JSON at " + std::to_string(place) + ": " + why.what());
    }

private:
    /// The value that comes next, in the array or object that is open.
    Json& add(Json::Kind kind) {
        Json* place = &root_;
        if (!open_.empty() && open_.back()->kind_ == Json::Kind::array) {
            place = &open_.back()->items_.emplace_back();
        } else if (!open_.empty()) {
            place = &open_.back()->members_.emplace_back(key_, Json()).second;
        }
        place->kind_ = kind;
        return *place;
    }
    bool put(Json::Kind kind, const std::string& text) {
        add(kind).text_ = text;
        return true;
    }
    bool open(Json::Kind kind) {
        open_.push_back(&add(kind));
        return true;
    }
    bool close() {
        open_.pop_back();
        return true;
    }

    Json root_;
    std::string key_;
    std::vector<Json*> open_;  // a value stays where it is while one inside it is open
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
    JsonReader reader;
    nlohmann::json::sax_parse(document, &reader);
    return reader.document();
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
