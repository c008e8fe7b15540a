#include "companyfile/document.h"

#include "companyfile/call_error.h"
#include "companyfile/text.h"

#include <algorithm>
#include <array>
#include <pugixml.hpp>

namespace companyfile {

namespace {

constexpr std::array<std::string_view, 3> kMetaData = {
    "NoMetaData", "MetaDataOnly", "MetaDataAndResponseData"};

template <class List>
bool contains(const List& list, std::string_view value) {
    return std::find(list.begin(), list.end(), value) != list.end();
}

bool isDigits(std::string_view text, std::string_view digits) {
    return !text.empty() && text.find_first_not_of(digits) == std::string_view::npos;
}

/// The reference between "&" and ";": one of the five entities or the number of a character.
bool isReference(std::string_view reference) {
    constexpr std::array<std::string_view, 5> kEntities = {"amp", "lt", "gt", "quot", "apos"};
    if (!reference.starts_with('#')) {
        return std::find(kEntities.begin(), kEntities.end(), reference) != kEntities.end();
    }
    reference.remove_prefix(1);
    const bool hexadecimal = reference.starts_with('x');
    reference.remove_prefix(hexadecimal ? 1 : 0);
    if (reference.size() > 7 ||
        !isDigits(reference, hexadecimal ? "0123456789abcdefABCDEF" : "0123456789")) {
        return false;
    }
    const auto value = std::stoul(std::string(reference), nullptr, hexadecimal ? 16 : 10);
    const bool control = value < 32 && value != 9 && value != 10 && value != 13;
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    return !control && !surrogate && value <= 0x10FFFF;
}

/// What the XML reader lets pass although it is not well formed or not taken by the program: bytes
/// above 127, control characters, a document type, stray ampersands.
void checkCharacters(std::string_view text) {
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte > 127 || (byte < 32 && byte != '\t' && byte != '\r' && byte != '\n')) {
            unparsable();
        }
    }
    if (text.find("<!DOCTYPE") != std::string_view::npos) {
        unparsable();
    }
    for (auto at = text.find('&'); at != std::string_view::npos; at = text.find('&', at + 1)) {
        const auto end = text.find(';', at);
        if (end == std::string_view::npos || !isReference(text.substr(at + 1, end - at - 1))) {
            unparsable();
        }
    }
}

/// The version of the instruction <?qbxml version="6.0"?>; without it the document is not for us.
std::string documentVersion(const pugi::xml_document& document) {
    const std::string value(trimmed(document.child("qbxml").value()));
    constexpr std::string_view kStart = "version=";
    if (!value.starts_with(kStart) || value.size() < kStart.size() + 3) {
        unparsable();
    }
    const char quote = value[kStart.size()];
    const auto end = value.find(quote, kStart.size() + 1);
    if ((quote != '"' && quote != '\'') || end == std::string::npos) {
        unparsable();
    }
    return value.substr(kStart.size() + 1, end - kStart.size() - 1);
}

/// The only child element of `parent`, which must be called `name`.
pugi::xml_node onlyChild(const pugi::xml_node& parent, std::string_view name) {
    pugi::xml_node result;
    for (const pugi::xml_node& child : parent.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            if (!trimmed(child.value()).empty()) {
                unparsable();
            }
        } else if (child.type() == pugi::node_element) {
            if (!result.empty() || child.name() != name) {
                unparsable();
            }
            result = child;
        }
    }
    if (result.empty()) {
        unparsable();
    }
    return result;
}

void readSetAttributes(const pugi::xml_node& set, Document& document) {
    std::string_view onError;
    for (const pugi::xml_attribute& attribute : set.attributes()) {
        const std::string_view name = attribute.name();
        const std::string_view value = attribute.value();
        if (name == "onError") {
            onError = value;
        } else if (name == "responseData" && (value == "includeAll" || value == "includeNone")) {
            document.answerData = value == "includeAll";
        } else if (name != "newMessageSetID" && name != "oldMessageSetID") {
            unparsable();
        }
    }
    if (onError == "rollbackOnError") {
        throw CallError(hresult::kNoRollback, "The value rollbackOnError is not supported.");
    }
    if (onError != "stopOnError" && onError != "continueOnError") {
        unparsable();
    }
    document.stopOnError = onError == "stopOnError";
}

void readAttributes(const pugi::xml_node& node, Request& request) {
    for (const pugi::xml_attribute& attribute : node.attributes()) {
        if (!contains(request.schema->attributes, attribute.name())) {
            unparsable();
        }
        if (std::string_view(attribute.name()) == "requestID") {
            request.hasId = true;
            request.id = attribute.value();
        } else if (std::string_view(attribute.name()) == "metaData") {
            request.metaData = attribute.value();
            if (!contains(kMetaData, request.metaData)) {
                unparsable();
            }
        }
    }
}

/// The fields of a request whose body wraps them; what may follow the body is IncludeRetElement.
Element unwrapped(Element element, const std::string& body, Request& request) {
    if (element.children.empty() || element.children.front().name != body ||
        !trimmed(element.text).empty()) {
        unparsable();
    }
    for (std::size_t i = 1; i < element.children.size(); ++i) {
        if (element.children[i].name != "IncludeRetElement") {
            unparsable();
        }
        request.wantedFields.push_back(element.children[i].text);
    }
    return std::move(element.children.front());
}

Request readRequest(const pugi::xml_node& node, int version) {
    Request request;
    std::string_view name = node.name();
    if (!removeSuffix(name, "Rq")) {
        unparsable();
    }
    request.name = name;
    request.schema = util::schemaRequest(name);
    if (request.schema == nullptr) {
        unparsable();
    }
    readAttributes(node, request);
    const std::string& body = request.schema->body;
    request.fields = elementFrom(node);
    if (!body.empty() && body != "-") {
        request.fields = unwrapped(std::move(request.fields), body, request);
    }
    checkShape(request.fields, *request.schema, version);
    if (body.empty() || body == "-") {
        for (const Element& child : request.fields.children) {
            if (child.name == "IncludeRetElement") {
                request.wantedFields.push_back(child.text);
            }
        }
    }
    return request;
}

}  // namespace

void unparsable() {
    throw CallError(
        hresult::kUnparsable, "QuickBooks found an error when parsing the provided XML text stream."
    );
}

int versionNumber(std::string_view version) {
    int number = 0;
    for (const char character : version) {
        if (character >= '0' && character <= '9') {
            number = number * 10 + (character - '0');
        }
    }
    return number;
}

Document readDocument(const std::string& text, const std::vector<std::string>& versions) {
    checkCharacters(text);
    pugi::xml_document xml;
    constexpr unsigned kForm = pugi::parse_default | pugi::parse_pi | pugi::parse_ws_pcdata_single;
    if (!xml.load_buffer(text.data(), text.size(), kForm, pugi::encoding_utf8)) {
        unparsable();
    }
    Document document;
    document.version = documentVersion(xml);
    if (!contains(versions, document.version)) {
        throw CallError(
            hresult::kUnknownVersion,
            "The version of qbXML that was requested is not supported or is unknown."
        );
    }
    const pugi::xml_node set = onlyChild(onlyChild(xml, "QBXML"), "QBXMLMsgsRq");
    readSetAttributes(set, document);
    for (const pugi::xml_node& node : set.children()) {
        if (node.type() == pugi::node_element) {
            document.requests.push_back(readRequest(node, versionNumber(document.version)));
        } else if ((node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) &&
                   !trimmed(node.value()).empty()) {
            unparsable();
        }
    }
    if (document.requests.empty()) {
        unparsable();
    }
    return document;
}

}  // namespace companyfile
