#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pugi {
class xml_node;
}  // namespace pugi

namespace companyfile {

/// One named element of a document or record: a text or a list of elements. Texts are UTF-8.
struct Element {
    std::string name;
    std::string text;
    std::vector<Element> children;

    /// The first child called `childName`; null when there is none.
    [[nodiscard]] const Element* find(std::string_view childName) const;
    Element* find(std::string_view childName);
    /// The text at a path as "BillAddress/City"; empty when it is absent.
    [[nodiscard]] std::string_view at(std::string_view path) const;
    [[nodiscard]] bool has(std::string_view childName) const { return find(childName) != nullptr; }
    /// Sets the text at a path and makes what is missing on the way, behind the other children.
    Element& set(std::string_view path, std::string_view value);
    /// Removes all children called `childName`.
    void remove(std::string_view childName);
};

/// The tree below an XML node.
/// @throws CallError kUnparsable when it is nested more deeply than any request or record is.
Element elementFrom(const pugi::xml_node& node);
/// Appends an element as ASCII XML without white space around its children.
void writeXml(std::string& out, const Element& element);
/// Appends text as ASCII XML; in an attribute the quote is escaped too.
void writeEscaped(std::string& out, std::string_view utf8, bool attribute = false);
/// The children as ASCII XML, and back. The form in which records are kept.
std::string fieldsXml(const Element& element);
Element fieldsFrom(std::string_view xml);

}  // namespace companyfile
