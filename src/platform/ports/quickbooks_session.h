#pragma once

#include "platform/ports/platform_error.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Numbers of session errors that the link tells apart.
inline constexpr std::int32_t kNoObjectLibrary = 429;
inline constexpr std::int32_t kNotRunning = static_cast<std::int32_t>(0x80040416);
inline constexpr std::int32_t kFileInUse = static_cast<std::int32_t>(0x80040422);
inline constexpr std::int32_t kParseFailed = static_cast<std::int32_t>(0x80040400);

/// One named element of a request or of an answer: a text, or children in the order in which they
/// were added. Names are the wire's own; texts are code page 1252 and already in the wire's form.
class QBElement {
public:
    explicit QBElement(std::string name = {}) : name_(std::move(name)) {}

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] const std::string& text() const { return text_; }
    void setText(std::string_view text) { text_ = std::string(text); }
    [[nodiscard]] const std::vector<QBElement>& children() const { return children_; }
    [[nodiscard]] std::vector<QBElement>& children() { return children_; }

    /// The element at `path` ("BillAddress/Addr1"); missing ones on the way are made. An element
    /// that was set twice keeps the last text.
    QBElement& at(std::string_view path);
    /// A further child of that name, for elements that repeat (lines).
    QBElement& append(std::string_view name);
    /// The first element at `path`; a missing one reads as an empty element.
    [[nodiscard]] const QBElement& find(std::string_view path) const;
    /// True when there is an element at `path`.
    [[nodiscard]] bool has(std::string_view path) const;
    /// The direct children called `name`.
    [[nodiscard]] std::vector<const QBElement*> all(std::string_view name) const;

private:
    std::string name_;
    std::string text_;
    std::vector<QBElement> children_;
};

/// How the company file goes on after a failed request of a set.
enum class OnError : std::uint8_t { stop = 0, continueOn = 1, rollback = 2 };

/// Port: one request message set. Holds requests until it is sent; elements may be filled in any
/// order (the adapter sorts them into the wire's order).
class IMsgSetRequest {
public:
    virtual ~IMsgSetRequest() = default;
    virtual void setOnError(OnError value) = 0;
    virtual void ClearRequests() = 0;
    /// Appends an empty request and gives the element that holds its fields. `request` is its name
    /// without "Rq", as "CustomerAdd" or "HostQuery". The reference holds until the next append.
    virtual QBElement& append(std::string_view request) = 0;
    [[nodiscard]] virtual int count() const = 0;
};

/// Numeric kinds of answers, as the session library counts them.
enum class ResponseType : std::int32_t {
    none = -1,
    employeeQuery = 1002,
    hostQuery = 1008,
    otherNameQuery = 1010,
    journalEntryAdd = 1013,
    customerQuery = 1015,
    customerAdd = 1016,
    itemQuery = 1023,
    receivePaymentAdd = 1033,
    vendorCreditAdd = 1034,
    creditMemoQuery = 1037,
    purchaseOrderQuery = 1041,
    salesReceiptAdd = 1043,
    salesReceiptQuery = 1044,
    customerModify = 1057,
    invoiceQuery = 1069,
    accountQuery = 1082,
    vendorModify = 1086,
    invoiceAdd = 1088,
    receivePaymentQuery = 1093,
    paymentMethodAdd = 1095,
    purchaseOrderAdd = 1096,
    vendorQuery = 1110,
    salesRepAdd = 1117,
};

/// One answer: status and the elements inside ("CustomerRet", ...). `hasDetail` is false when the
/// answer element was empty.
struct IResponse {
    std::string name;  ///< as "CustomerQueryRs"
    ResponseType Type = ResponseType::none;
    std::int32_t StatusCode = 0;
    std::string StatusSeverity;
    std::string StatusMessage;
    QBElement Detail;
    [[nodiscard]] bool hasDetail() const { return !Detail.children().empty(); }
};

/// The answers of one sent set, in request order.
struct IMsgSetResponse {
    bool hasResponseList = true;
    std::vector<IResponse> ResponseList;
};

/// Port: the session with the accounting package. Every call blocks until the answer is there and
/// throws PlatformError when the call itself fails; a refused request is not a failure but a
/// response with a status. Creating the manager throws kNoObjectLibrary when there is no library.
class IQBSessionManager {
public:
    virtual ~IQBSessionManager() = default;
    virtual void OpenConnection(const std::string& appId, const std::string& appName) = 0;
    /// Opens the company file; an empty name means the one that is open. Mode 0: single user.
    virtual void BeginSession(const std::string& qbFile, int openMode) = 0;
    virtual void EndSession() = 0;
    virtual void CloseConnection() = 0;
    [[nodiscard]] virtual std::vector<std::string> QBXMLVersionsForSession() = 0;
    [[nodiscard]] virtual std::shared_ptr<IMsgSetRequest>
    CreateMsgSetRequest(const std::string& country, int major, int minor) = 0;
    virtual std::shared_ptr<IMsgSetResponse> DoRequests(const IMsgSetRequest& requests) = 0;
};

/// Port: carries one request document to a company file and brings the answer document back.
class QBChannel {
public:
    virtual ~QBChannel() = default;
    virtual void open(const std::string& appId, const std::string& appName) = 0;
    virtual void begin(const std::string& companyFile, int openMode) = 0;
    virtual void end() = 0;
    virtual void close() = 0;
    /// Version list for the session, as "13.0".
    [[nodiscard]] virtual std::vector<std::string> versions() = 0;
    /// @throws PlatformError with the HRESULT when the document was not carried out.
    virtual std::string exchange(const std::string& document) = 0;
};

}  // namespace platform
