#include "companyfile/document.h"
#include "companyfile/text.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <set>

namespace companyfile {

namespace {

using util::SchemaChoice;
using util::SchemaField;

/// Checks the children of one aggregate, in one pass over them.
class ShapeCheck {
public:
    ShapeCheck(
        const std::vector<SchemaField>& fields,
        const std::vector<SchemaChoice>& choices,
        int version
    )
        : fields_(fields),
          choices_(choices),
          version_(version) {}

    /// Takes the next child; gives its field.
    const SchemaField& take(const Element& child) {
        const std::size_t index = indexOf(child.name);
        const SchemaField& field = fields_[index];
        if (!field.since.empty() && versionNumber(field.since) > version_) {
            unparsable();
        }
        if (!mayStandAt(index)) {
            unparsable();
        }
        takeAlternatives(field);
        last_ = index;
        any_ = true;
        taken_.insert(index);
        return field;
    }

    /// Everything that has to be there is there.
    void finish() const {
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            const SchemaField& field = fields_[i];
            const bool asked = field.choice.empty() || isTaken(field.choice, field.alternative);
            if (field.required && asked && repeatingGroup(field) == nullptr &&
                !taken_.contains(i)) {
                unparsable();
            }
        }
        for (const SchemaChoice& choice : choices_) {
            const bool asked = choice.insideChoice.empty() ||
                               isTaken(choice.insideChoice, choice.insideAlternative);
            if (choice.required && asked && !alternatives_.contains(choice.id)) {
                unparsable();
            }
        }
    }

private:
    std::size_t indexOf(std::string_view name) const {
        const auto found =
            std::find_if(fields_.begin(), fields_.end(), [&](const SchemaField& field) {
                return field.name == name;
            });
        if (found == fields_.end()) {
            unparsable();
        }
        return static_cast<std::size_t>(found - fields_.begin());
    }

    const SchemaChoice* choiceCalled(std::string_view id) const {
        const auto found =
            std::find_if(choices_.begin(), choices_.end(), [&](const SchemaChoice& choice) {
                return choice.id == id;
            });
        return found == choices_.end() ? nullptr : &*found;
    }

    /// The group around `field` that may be taken again and again; null when there is none.
    const SchemaChoice* repeatingGroup(const SchemaField& field) const {
        for (const SchemaChoice* choice = choiceCalled(field.choice); choice != nullptr;
             choice = choiceCalled(choice->insideChoice)) {
            if (choice->repeats) {
                return choice;
            }
        }
        return nullptr;
    }

    bool mayStandAt(std::size_t index) const {
        if (!any_ || index > last_) {
            return true;
        }
        const SchemaChoice* group = repeatingGroup(fields_[index]);
        return (index == last_ && fields_[index].repeats) ||
               (group != nullptr && group == repeatingGroup(fields_[last_]));
    }

    bool isTaken(const std::string& choice, int alternative) const {
        const auto found = alternatives_.find(choice);
        return found != alternatives_.end() && found->second == alternative;
    }

    void takeAlternatives(const SchemaField& field) {
        std::string id = field.choice;
        int alternative = field.alternative;
        while (const SchemaChoice* choice = choiceCalled(id)) {
            const auto [place, isNew] = alternatives_.emplace(choice->id, alternative);
            if (!isNew && place->second != alternative && repeatingGroup(field) == nullptr) {
                unparsable();
            }
            id = choice->insideChoice;
            alternative = choice->insideAlternative;
        }
    }

    const std::vector<SchemaField>& fields_;
    const std::vector<SchemaChoice>& choices_;
    int version_;
    std::size_t last_ = 0;
    bool any_ = false;
    std::set<std::size_t> taken_;
    std::map<std::string, int> alternatives_;
};

/// False for a number beyond the limits of its field; what is no number is refused as a value.
bool isInRange(const SchemaField& field, std::string_view text) {
    const bool hasLimits = field.minValue != 0 || field.maxValue != 0;
    long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return !hasLimits || error != std::errc() ||
           (number >= field.minValue && (field.maxValue == 0 || number <= field.maxValue));
}

void checkFields(
    const Element& element,
    const std::vector<SchemaField>& fields,
    const std::vector<SchemaChoice>& choices,
    const std::vector<std::string>& foreign,
    const std::string& path,
    int version
) {
    if (!trimmed(element.text).empty()) {
        unparsable();
    }
    ShapeCheck check(fields, choices, version);
    for (const Element& child : element.children) {
        const std::string childPath = path + child.name;
        if (std::find(foreign.begin(), foreign.end(), childPath) != foreign.end()) {
            continue;
        }
        const SchemaField& field = check.take(child);
        if (field.type == "AGGREGATE") {
            checkFields(child, field.fields, field.choices, foreign, childPath + ".", version);
        } else if (!child.children.empty() || !isInRange(field, child.text)) {
            unparsable();
        }
    }
    check.finish();
}

}  // namespace

void checkShape(const Element& fields, const util::SchemaRequest& request, int version) {
    checkFields(fields, request.fields, request.choices, request.foreign, "", version);
}

}  // namespace companyfile
