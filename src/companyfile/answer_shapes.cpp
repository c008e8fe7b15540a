#include "companyfile/answer_shapes.h"

#include "companyfile/text.h"

#include <algorithm>
#include <map>

namespace companyfile {

namespace {

/// The elements of a record in the order of the wire.
struct Shape {
    std::string_view record;
    std::string_view elements;
};
constexpr Shape kShapes[] = {
    {"HostRet",
     "ProductName MajorVersion MinorVersion Country SupportedQBXMLVersion "
     "IsAutomaticLogin QBFileMode"},
    {"AccountRet",
     "ListID TimeCreated TimeModified EditSequence Name FullName IsActive ParentRef "
     "Sublevel AccountType SpecialAccountType AccountNumber BankNumber Desc Balance "
     "TotalBalance TaxLineInfoRet CashFlowClassification"},
    {"CustomerRet",
     "ListID TimeCreated TimeModified EditSequence Name FullName IsActive ParentRef "
     "Sublevel CompanyName Salutation FirstName MiddleName LastName BillAddress "
     "ShipAddress Phone AltPhone Fax Email Contact AltContact CustomerTypeRef TermsRef "
     "SalesRepRef Balance TotalBalance SalesTaxCodeRef ItemSalesTaxRef ResaleNumber "
     "AccountNumber CreditLimit PreferredPaymentMethodRef CreditCardInfo JobStatus "
     "JobStartDate JobProjectedEndDate JobEndDate JobDesc JobTypeRef Notes PriceLevelRef"},
    {"VendorRet",
     "ListID TimeCreated TimeModified EditSequence Name IsActive CompanyName Salutation "
     "FirstName MiddleName LastName VendorAddress Phone AltPhone Fax Email Contact "
     "AltContact NameOnCheck AccountNumber Notes VendorTypeRef TermsRef CreditLimit "
     "VendorTaxIdent IsVendorEligibleFor1099 Balance BillingRateRef"},
    {"OtherNameRet",
     "ListID TimeCreated TimeModified EditSequence Name IsActive CompanyName Salutation "
     "FirstName MiddleName LastName OtherNameAddress Phone AltPhone Fax Email Contact "
     "AltContact AccountNumber Notes"},
    {"EmployeeRet",
     "ListID TimeCreated TimeModified EditSequence Name IsActive Salutation FirstName "
     "MiddleName LastName EmployeeAddress PrintAs Phone Mobile Pager PagerPIN AltPhone "
     "Fax SSN Email EmployeeType Gender HiredDate ReleasedDate BirthDate AccountNumber "
     "Notes BillingRateRef EmployeePayrollInfo"},
    {"ItemInventoryRet",
     "ListID TimeCreated TimeModified EditSequence Name FullName IsActive ParentRef "
     "Sublevel SalesTaxCodeRef SalesDesc SalesPrice IncomeAccountRef PurchaseDesc "
     "PurchaseCost COGSAccountRef PrefVendorRef AssetAccountRef ReorderPoint "
     "QuantityOnHand AverageCost QuantityOnOrder QuantityOnSalesOrder"},
    {"ItemNonInventoryRet",
     "ListID TimeCreated TimeModified EditSequence Name FullName IsActive ParentRef "
     "Sublevel SalesTaxCodeRef SalesOrPurchase SalesAndPurchase"},
    {"ItemServiceRet",
     "ListID TimeCreated TimeModified EditSequence Name FullName IsActive ParentRef "
     "Sublevel SalesTaxCodeRef SalesOrPurchase SalesAndPurchase"},
    {"ItemOtherChargeRet",
     "ListID TimeCreated TimeModified EditSequence Name FullName IsActive ParentRef "
     "Sublevel SalesTaxCodeRef SalesOrPurchase SalesAndPurchase SpecialItemType"},
    {"ItemDiscountRet",
     "ListID TimeCreated TimeModified EditSequence Name FullName IsActive ParentRef "
     "Sublevel ItemDesc SalesTaxCodeRef DiscountRate DiscountRatePercent AccountRef"},
    {"ItemPaymentRet",
     "ListID TimeCreated TimeModified EditSequence Name IsActive ItemDesc "
     "DepositToAccountRef PaymentMethodRef"},
    {"ItemSalesTaxRet",
     "ListID TimeCreated TimeModified EditSequence Name IsActive ItemDesc TaxRate "
     "TaxVendorRef"},
    {"SalesTaxCodeRet",
     "ListID TimeCreated TimeModified EditSequence Name IsActive IsTaxable Desc"},
    {"StandardTermsRet",
     "ListID TimeCreated TimeModified EditSequence Name IsActive StdDueDays "
     "StdDiscountDays DiscountPct"},
    {"PaymentMethodRet", "ListID TimeCreated TimeModified EditSequence Name IsActive"},
    {"SalesRepRet",
     "ListID TimeCreated TimeModified EditSequence Initial IsActive SalesRepEntityRef"},
    {"JobTypeRet",
     "ListID TimeCreated TimeModified EditSequence Name FullName IsActive ParentRef "
     "Sublevel"},
    {"ShipMethodRet", "ListID TimeCreated TimeModified EditSequence Name IsActive"},
    {"CustomerMsgRet", "ListID TimeCreated TimeModified EditSequence Name IsActive"},
    {"SalesReceiptRet",
     "TxnID TimeCreated TimeModified EditSequence TxnNumber CustomerRef ClassRef "
     "TemplateRef TxnDate RefNumber BillAddress ShipAddress IsPending CheckNumber "
     "PaymentMethodRef DueDate SalesRepRef ShipDate ShipMethodRef FOB Subtotal "
     "ItemSalesTaxRef SalesTaxPercentage SalesTaxTotal TotalAmount Memo CustomerMsgRef "
     "IsToBePrinted IsToBeEmailed CustomerSalesTaxCodeRef DepositToAccountRef Other "
     "SalesReceiptLineRet"},
    {"InvoiceRet",
     "TxnID TimeCreated TimeModified EditSequence TxnNumber CustomerRef ClassRef "
     "ARAccountRef TemplateRef TxnDate RefNumber BillAddress ShipAddress IsPending "
     "IsFinanceCharge PONumber TermsRef DueDate SalesRepRef FOB ShipDate ShipMethodRef "
     "Subtotal ItemSalesTaxRef SalesTaxPercentage SalesTaxTotal AppliedAmount "
     "BalanceRemaining Memo IsPaid CustomerMsgRef IsToBePrinted IsToBeEmailed "
     "CustomerSalesTaxCodeRef SuggestedDiscountAmount SuggestedDiscountDate Other "
     "LinkedTxn InvoiceLineRet"},
    {"CreditMemoRet",
     "TxnID TimeCreated TimeModified EditSequence TxnNumber CustomerRef ClassRef "
     "ARAccountRef TemplateRef TxnDate RefNumber BillAddress ShipAddress IsPending "
     "PONumber TermsRef DueDate SalesRepRef FOB ShipDate ShipMethodRef Subtotal "
     "ItemSalesTaxRef SalesTaxPercentage SalesTaxTotal TotalAmount CreditRemaining Memo "
     "CustomerMsgRef IsToBePrinted IsToBeEmailed CustomerSalesTaxCodeRef Other LinkedTxn "
     "CreditMemoLineRet"},
    {"JournalEntryRet",
     "TxnID TimeCreated TimeModified EditSequence TxnNumber TxnDate RefNumber "
     "IsAdjustment JournalDebitLine JournalCreditLine"},
    {"ReceivePaymentRet",
     "TxnID TimeCreated TimeModified EditSequence TxnNumber CustomerRef ARAccountRef "
     "TxnDate RefNumber TotalAmount PaymentMethodRef Memo DepositToAccountRef "
     "UnusedPayment UnusedCredits AppliedToTxnRet"},
    {"PurchaseOrderRet",
     "TxnID TimeCreated TimeModified EditSequence TxnNumber VendorRef ClassRef "
     "ShipToEntityRef TemplateRef TxnDate RefNumber VendorAddress ShipAddress TermsRef "
     "DueDate ExpectedDate ShipMethodRef FOB TotalAmount IsManuallyClosed "
     "IsFullyReceived Memo VendorMsg IsToBePrinted IsToBeEmailed Other1 Other2 LinkedTxn "
     "PurchaseOrderLineRet"},
    {"ItemReceiptRet",
     "TxnID TimeCreated TimeModified EditSequence TxnNumber VendorRef APAccountRef "
     "TxnDate TotalAmount RefNumber Memo LinkedTxn ExpenseLineRet ItemLineRet"},
    {"VendorCreditRet",
     "TxnID TimeCreated TimeModified EditSequence TxnNumber VendorRef APAccountRef "
     "TxnDate CreditAmount RefNumber Memo LinkedTxn ExpenseLineRet ItemLineRet "
     "OpenAmount"},
    {"SalesReceiptLineRet",
     "TxnLineID ItemRef Desc Quantity Rate RatePercent ClassRef Amount ServiceDate "
     "SalesTaxCodeRef Other1 Other2"},
    {"LinkedTxn", "TxnID TxnType TxnDate RefNumber LinkType Amount"},
    {"InvoiceLineRet",
     "TxnLineID ItemRef Desc Quantity Rate RatePercent ClassRef Amount ServiceDate "
     "SalesTaxCodeRef Other1 Other2"},
    {"CreditMemoLineRet",
     "TxnLineID ItemRef Desc Quantity Rate RatePercent ClassRef Amount ServiceDate "
     "SalesTaxCodeRef Other1 Other2"},
    {"JournalDebitLine", "TxnLineID AccountRef Amount Memo EntityRef ClassRef BillableStatus"},
    {"JournalCreditLine", "TxnLineID AccountRef Amount Memo EntityRef ClassRef BillableStatus"},
    {"AppliedToTxnRet",
     "TxnID TxnType TxnDate RefNumber BalanceRemaining Amount DiscountAmount "
     "DiscountAccountRef"},
    {"PurchaseOrderLineRet",
     "TxnLineID ItemRef Desc Quantity Rate ClassRef Amount CustomerRef ServiceDate "
     "ReceivedQuantity IsManuallyClosed Other1 Other2"},
    {"ExpenseLineRet", "TxnLineID AccountRef Amount Memo CustomerRef ClassRef BillableStatus"},
    {"ItemLineRet",
     "TxnLineID ItemRef Desc Quantity Cost Amount CustomerRef ClassRef BillableStatus"},
};

using Places = std::map<std::string_view, std::size_t>;

std::map<std::string_view, Places> readShapes() {
    std::map<std::string_view, Places> shapes;
    for (const Shape& shape : kShapes) {
        Places& places = shapes[shape.record];
        for (const std::string_view element : split(shape.elements, ' ')) {
            places.emplace(element, places.size());
        }
    }
    return shapes;
}

const Places* placesOf(std::string_view record) {
    static const std::map<std::string_view, Places> kPlaces = readShapes();
    const auto found = kPlaces.find(record);
    return found == kPlaces.end() ? nullptr : &found->second;
}

}  // namespace

void arrange(Element& record) {
    const Places* places = placesOf(record.name);
    if (places == nullptr) {
        return;
    }
    std::erase_if(record.children, [&](const Element& child) {
        return !places->contains(child.name);
    });
    std::stable_sort(
        record.children.begin(),
        record.children.end(),
        [&](const Element& left, const Element& right) {
            return places->at(left.name) < places->at(right.name);
        }
    );
}

}  // namespace companyfile
