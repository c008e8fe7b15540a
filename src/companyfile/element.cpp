#include "companyfile/element.h"

#include "companyfile/document.h"
#include "companyfile/text.h"

#include <algorithm>
#include <pugixml.hpp>

namespace companyfile {

namespace {

/// Reading and writing go one call down for each level.
constexpr int kDeepest = 64;

Element elementBelow(const pugi::xml_node& node, int depth) {
    if (depth > kDeepest) {
        unparsable();
    }
    Element element{node.name(), {}, {}};
    for (const pugi::xml_node& child : node.children()) {
        if (child.type() == pugi::node_element) {
            element.children.push_back(elementBelow(child, depth + 1));
        } else if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            element.text += child.value();
        }
    }
    return element;
}

}  // namespace

const Element* Element::find(std::string_view childName) const {
    const auto found = std::find_if(children.begin(), children.end(), [&](const Element& child) {
        return child.name == childName;
    });
    return found == children.end() ? nullptr : &*found;
}

Element* Element::find(std::string_view childName) {
    return const_cast<Element*>(static_cast<const Element*>(this)->find(childName));
}

std::string_view Element::at(std::string_view path) const {
    const Element* element = this;
    for (const std::string_view step : split(path, '/')) {
        element = element->find(step);
        if (element == nullptr) {
            return {};
        }
    }
    return element->text;
}

Element& Element::set(std::string_view path, std::string_view value) {
    Element* element = this;
    for (const std::string_view step : split(path, '/')) {
        Element* child = element->find(step);
        element = child != nullptr
                      ? child
                      : &element->children.emplace_back(Element{std::string(step), {}, {}});
    }
    element->text = value;
    return *element;
}

void Element::remove(std::string_view childName) {
    std::erase_if(children, [&](const Element& child) { return child.name == childName; });
}

Element elementFrom(const pugi::xml_node& node) {
    return elementBelow(node, 0);
}

void writeEscaped(std::string& out, std::string_view utf8, bool attribute) {
    while (!utf8.empty()) {
        const char32_t character = nextCharacter(utf8);
        switch (character) {
        case U'&':
            out += "&amp;";
            break;
        case U'<':
            out += "&lt;";
            break;
        case U'>':
            out += "&gt;";
            break;
        case U'"':
            out += attribute ? "&quot;" : "\"";
            break;
        default:
            if (character > 126 || character == U'\r' || (attribute && character < 32)) {
                out += "&#" + std::to_string(static_cast<unsigned>(character)) + ";";
            } else {
                out += static_cast<char>(character);
            }
        }
    }
}

void writeXml(std::string& out, const Element& element) {
    out += '<';
    out += element.name;
    out += '>';
    writeEscaped(out, element.text);
    for (const Element& child : element.children) {
        writeXml(out, child);
    }
    out += "</";
    out += element.name;
    out += '>';
}

std::string fieldsXml(const Element& element) {
    std::string out;
    for (const Element& child : element.children) {
        writeXml(out, child);
    }
    return out;
}

Element fieldsFrom(std::string_view xml) {
    pugi::xml_document document;
    // Blanks that are the whole of a text are kept: an answer gives back what was sent.
    constexpr unsigned kForm =
        pugi::parse_default | pugi::parse_ws_pcdata_single | pugi::parse_fragment;
    document.load_buffer(xml.data(), xml.size(), kForm & ~static_cast<unsigned>(pugi::parse_eol));
    return elementFrom(document);
}

}  // namespace companyfile
