#include "platform/qbxml/response_document.h"

#include "util/text_codec.h"

#include <algorithm>
#include <charconv>
#include <pugixml.hpp>
#include <string_view>

namespace platform {

namespace {

/// Deeper nesting than any answer has; reading goes one call down for each level.
constexpr int kDeepest = 64;

struct TypeRow {
    std::string_view answer;
    ResponseType type;
};

constexpr TypeRow kTypes[] = {
    {"EmployeeQueryRs", ResponseType::employeeQuery},
    {"HostQueryRs", ResponseType::hostQuery},
    {"OtherNameQueryRs", ResponseType::otherNameQuery},
    {"JournalEntryAddRs", ResponseType::journalEntryAdd},
    {"CustomerQueryRs", ResponseType::customerQuery},
    {"CustomerAddRs", ResponseType::customerAdd},
    {"ItemQueryRs", ResponseType::itemQuery},
    {"ReceivePaymentAddRs", ResponseType::receivePaymentAdd},
    {"VendorCreditAddRs", ResponseType::vendorCreditAdd},
    {"CreditMemoQueryRs", ResponseType::creditMemoQuery},
    {"PurchaseOrderQueryRs", ResponseType::purchaseOrderQuery},
    {"SalesReceiptAddRs", ResponseType::salesReceiptAdd},
    {"SalesReceiptQueryRs", ResponseType::salesReceiptQuery},
    {"CustomerModRs", ResponseType::customerModify},
    {"InvoiceQueryRs", ResponseType::invoiceQuery},
    {"AccountQueryRs", ResponseType::accountQuery},
    {"VendorModRs", ResponseType::vendorModify},
    {"InvoiceAddRs", ResponseType::invoiceAdd},
    {"ReceivePaymentQueryRs", ResponseType::receivePaymentQuery},
    {"PaymentMethodAddRs", ResponseType::paymentMethodAdd},
    {"PurchaseOrderAddRs", ResponseType::purchaseOrderAdd},
    {"VendorQueryRs", ResponseType::vendorQuery},
    {"SalesRepAddRs", ResponseType::salesRepAdd},
};

[[noreturn]] void unreadable(const std::string& why) {
    throw PlatformError(kUnreadableAnswer, "The answer of the company file " + why + ".");
}

ResponseType typeOf(std::string_view answer) {
    const auto* const row =
        std::find_if(std::begin(kTypes), std::end(kTypes), [&](const TypeRow& candidate) {
            return candidate.answer == answer;
        });
    return row == std::end(kTypes) ? ResponseType::none : row->type;
}

void copyInto(QBElement& element, const pugi::xml_node& node, int depth) {
    if (depth > kDeepest) {
        unreadable("is nested too deeply");
    }
    std::string text;
    for (const pugi::xml_node& child : node.children()) {
        if (child.type() == pugi::node_element) {
            copyInto(element.append(child.name()), child, depth + 1);
        } else if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            text += child.value();
        }
    }
    element.setText(util::fromUtf8(text));
}

std::int32_t statusOf(const pugi::xml_node& node) {
    const std::string_view text = node.attribute("statusCode").value();
    std::int32_t code = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), code);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) {
        unreadable(std::string("has no status code in ") + node.name());
    }
    return code;
}

IResponse readResponse(const pugi::xml_node& node) {
    IResponse response;
    response.name = node.name();
    response.Type = typeOf(response.name);
    response.StatusCode = statusOf(node);
    response.StatusSeverity = node.attribute("statusSeverity").value();
    response.StatusMessage = util::fromUtf8(node.attribute("statusMessage").value());
    response.Detail = QBElement(response.name);
    copyInto(response.Detail, node, 0);
    return response;
}

}  // namespace

std::shared_ptr<IMsgSetResponse> readResponseDocument(const std::string& document) {
    if (document.empty()) {
        unreadable("is empty");
    }
    pugi::xml_document xml;
    const pugi::xml_parse_result result = xml.load_buffer(
        document.data(),
        document.size(),
        pugi::parse_default | pugi::parse_ws_pcdata_single,
        pugi::encoding_utf8
    );
    if (!result) {
        unreadable("cannot be read at byte " + std::to_string(result.offset));
    }
    if (std::string_view(xml.document_element().name()) != "QBXML") {
        unreadable("is no QBXML document");
    }
    auto responses = std::make_shared<IMsgSetResponse>();
    const pugi::xml_node set = xml.document_element().child("QBXMLMsgsRs");
    responses->hasResponseList = !set.empty();
    for (const pugi::xml_node& node : set.children()) {
        if (node.type() == pugi::node_element) {
            responses->ResponseList.push_back(readResponse(node));
        }
    }
    return responses;
}

}  // namespace platform
