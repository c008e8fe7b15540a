#include "qb/return_list.h"

#include "util/basic_error.h"

namespace qb {

int ReturnList::count() const {
    return answer_ == nullptr ? 0 : static_cast<int>(answer_->Detail.children().size());
}

const platform::QBElement& ReturnList::at(int index) const {
    if (index < 0 || index >= count()) {
        throw util::BasicError::of(9);
    }
    return answer_->Detail.children()[static_cast<std::size_t>(index)];
}

}  // namespace qb
