#include "platform/ports/quickbooks_session.h"

#include <algorithm>

namespace platform {

namespace {

const QBElement* step(const QBElement& parent, std::string_view name) {
    const auto& children = parent.children();
    const auto found = std::find_if(children.begin(), children.end(), [&](const QBElement& child) {
        return child.name() == name;
    });
    return found == children.end() ? nullptr : &*found;
}

const QBElement* walk(const QBElement& root, std::string_view path) {
    const QBElement* element = &root;
    while (element != nullptr && !path.empty()) {
        const std::size_t slash = path.find('/');
        element = step(*element, path.substr(0, slash));
        path = slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1);
    }
    return element;
}

}  // namespace

QBElement& QBElement::at(std::string_view path) {
    QBElement* element = this;
    while (!path.empty()) {
        const std::size_t slash = path.find('/');
        const std::string_view name = path.substr(0, slash);
        auto& children = element->children_;
        const auto found =
            std::find_if(children.begin(), children.end(), [&](const QBElement& child) {
                return child.name() == name;
            });
        element = found == children.end() ? &element->append(name) : &*found;
        path = slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1);
    }
    return *element;
}

QBElement& QBElement::append(std::string_view name) {
    return children_.emplace_back(std::string(name));
}

const QBElement& QBElement::find(std::string_view path) const {
    static const QBElement kMissing;
    const QBElement* element = walk(*this, path);
    return element == nullptr ? kMissing : *element;
}

bool QBElement::has(std::string_view path) const {
    return walk(*this, path) != nullptr;
}

std::vector<const QBElement*> QBElement::all(std::string_view name) const {
    std::vector<const QBElement*> found;
    for (const QBElement& child : children_) {
        if (child.name() == name) {
            found.push_back(&child);
        }
    }
    return found;
}

}  // namespace platform
