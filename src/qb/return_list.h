#pragma once

#include "platform/ports/quickbooks_session.h"

#include <memory>

namespace qb {

/// The elements that a query found, kept alive with the answer that they came in.
class ReturnList {
public:
    /// Keeps an answer; its direct children are the elements.
    void keep(std::shared_ptr<const platform::IResponse> answer) { answer_ = std::move(answer); }
    /// Count of elements; 0 while no answer is kept.
    [[nodiscard]] int count() const;
    /// The element at `index`, from 0. @throws BasicError 9 when there is none.
    [[nodiscard]] const platform::QBElement& at(int index) const;

private:
    std::shared_ptr<const platform::IResponse> answer_;
};

}  // namespace qb
