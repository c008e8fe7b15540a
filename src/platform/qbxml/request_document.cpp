#include "platform/qbxml/request_document.h"

#include "util/qbxml_schema.h"
#include "util/text_codec.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

namespace platform {

namespace {

using util::SchemaChoice;
using util::SchemaField;

constexpr const char* kOnErrorWords[] = {"stopOnError", "continueOnError", "rollbackOnError"};

/// One level of the format: what may stand side by side there, in the wire's order.
struct Level {
    std::span<const SchemaField> fields;
    std::span<const SchemaChoice> choices;
};

/// Takes one character off the front of well-formed UTF-8 and gives its number.
std::uint32_t takeCharacter(std::string_view& utf8) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(utf8[at]); };
    std::uint32_t number = byte(0);
    std::size_t length = 1;
    if (number >= 0x80U) {
        length = number >= 0xF0U ? 4 : number >= 0xE0U ? 3 : 2;
        number &= 0x7FU >> length;
        for (std::size_t at = 1; at < length; ++at) {
            number = number << 6U | (byte(at) & 0x3FU);
        }
    }
    utf8.remove_prefix(length);
    return number;
}

void writeCharacter(std::string& out, std::uint32_t number) {
    constexpr std::pair<std::uint32_t, const char*> kEntities[] = {
        {'&', "&amp;"},
        {'<', "&lt;"},
        {'>', "&gt;"},
        {'"', "&quot;"},
        {'\r', "&#13;"},
    };
    for (const auto& [character, entity] : kEntities) {
        if (character == number) {
            out += entity;
            return;
        }
    }
    if (number > 0x7EU) {
        out += "&#" + std::to_string(number) + ";";
    } else if (number >= ' ' || number == '\t' || number == '\n') {
        out += static_cast<char>(number);
    } else {
        out += ' ';
    }
}

void writeText(std::string& out, std::string_view text) {
    const std::string utf8 = util::toUtf8(text);
    for (std::string_view rest = utf8; !rest.empty();) {
        writeCharacter(out, takeCharacter(rest));
    }
}

/// Place of a field in its level. The members of a group that may be taken again and again share
/// the place of the first.
std::ptrdiff_t placeOf(const SchemaField& field, const Level& level) {
    const bool inMixedGroup =
        std::any_of(level.choices.begin(), level.choices.end(), [&](const SchemaChoice& choice) {
            return choice.repeats && choice.id == field.choice;
        });
    const auto first =
        std::find_if(level.fields.begin(), level.fields.end(), [&](const SchemaField& other) {
            return inMixedGroup ? other.choice == field.choice : other.name == field.name;
        });
    return first - level.fields.begin();
}

const SchemaField* fieldOf(const Level& level, std::string_view name) {
    const auto found =
        std::find_if(level.fields.begin(), level.fields.end(), [&](const SchemaField& field) {
            return field.name == name;
        });
    return found == level.fields.end() ? nullptr : &*found;
}

/// The children of an element in the wire's order.
std::vector<const QBElement*> inWireOrder(const QBElement& parent, const Level& level) {
    std::vector<std::pair<std::ptrdiff_t, const QBElement*>> placed;
    std::ptrdiff_t place = -1;
    for (const QBElement& child : parent.children()) {
        const SchemaField* field = fieldOf(level, child.name());
        place = field == nullptr ? place : placeOf(*field, level);
        placed.emplace_back(place, &child);
    }
    std::stable_sort(placed.begin(), placed.end(), [](const auto& left, const auto& right) {
        return left.first < right.first;
    });
    std::vector<const QBElement*> children;
    children.reserve(placed.size());
    for (const auto& entry : placed) {
        children.push_back(entry.second);
    }
    return children;
}

std::string tag(const std::string& name) {
    return "<" + name + ">";
}

std::string endTag(const std::string& name) {
    return "</" + name + ">\n";
}

void writeChildren(
    std::string& out, const QBElement& parent, const Level& level, const std::string& indent
) {
    for (const QBElement* child : inWireOrder(parent, level)) {
        out += indent + tag(child->name());
        if (child->children().empty()) {
            writeText(out, child->text());
        } else {
            const SchemaField* field = fieldOf(level, child->name());
            const Level inside = field == nullptr ? Level{} : Level{field->fields, field->choices};
            out += "\n";
            writeChildren(out, *child, inside, indent + "  ");
            out += indent;
        }
        out += endTag(child->name());
    }
}

/// One request with its number and, where the format wants it, the body that wraps its fields.
void writeRequest(std::string& out, const QBElement& request, std::size_t number) {
    const util::SchemaRequest* schema = util::schemaRequest(request.name());
    const Level level = schema == nullptr ? Level{} : Level{schema->fields, schema->choices};
    const std::string body = schema == nullptr ? std::string() : schema->body;
    const std::string name = request.name() + "Rq";
    out += "<" + name + " requestID=\"" + std::to_string(number) + "\">\n";
    if (!body.empty()) {
        out += tag(body) + "\n";
    }
    writeChildren(out, request, level, "  ");
    if (!body.empty()) {
        out += endTag(body);
    }
    out += endTag(name);
}

}  // namespace

QBElement& QbxmlRequestSet::append(std::string_view request) {
    return requests_.emplace_back(std::string(request));
}

std::string QbxmlRequestSet::document() const {
    std::string out = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<?qbxml version=\"" + version_ +
                      "\"?>\n<QBXML>\n<QBXMLMsgsRq onError=\"" +
                      kOnErrorWords[static_cast<std::size_t>(onError_)] + "\">\n";
    for (std::size_t number = 0; number < requests_.size(); ++number) {
        writeRequest(out, requests_[number], number);
    }
    return out + "</QBXMLMsgsRq>\n</QBXML>\n";
}

}  // namespace platform
