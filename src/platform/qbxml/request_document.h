#pragma once

#include "platform/ports/quickbooks_session.h"

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A request set that becomes one qbXML document. Its elements may be filled in any order.
class QbxmlRequestSet : public IMsgSetRequest {
public:
    /// @param version  as the document names it: "6.0", or with the country in front ("CA3.0").
    explicit QbxmlRequestSet(std::string version) : version_(std::move(version)) {}

    void setOnError(OnError value) override { onError_ = value; }
    void ClearRequests() override { requests_.clear(); }
    QBElement& append(std::string_view request) override;
    [[nodiscard]] int count() const override { return static_cast<int>(requests_.size()); }

    /// The document: pure ASCII, the elements in the wire's order, requests numbered from 0.
    /// Elements that repeat as a group (lines of several kinds) keep the order of their filling. An
    /// element that the format has no place for stands behind the one that it was filled after. A
    /// control character, which no document can hold, goes out as a blank.
    [[nodiscard]] std::string document() const;

private:
    std::string version_;
    OnError onError_ = OnError::stop;
    std::vector<QBElement> requests_;
};

}  // namespace platform
