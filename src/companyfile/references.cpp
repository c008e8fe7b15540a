#include "companyfile/references.h"

#include "companyfile/status.h"
#include "companyfile/text.h"
#include "companyfile/values.h"

#include <algorithm>

namespace companyfile {

namespace {

struct Reference {
    std::string_view field;
    std::string_view label;  ///< what messages call the kind referred to
    std::string_view kinds;
};
constexpr std::string_view kAccount = "Account";
constexpr std::string_view kAnyName = "Customer Vendor Employee OtherName";
constexpr std::string_view kAnyItem = "ItemInventory ItemNonInventory ItemService ItemOtherCharge "
                                      "ItemDiscount ItemPayment ItemSalesTax";

constexpr Reference kReferences[] = {
    {"CustomerRef", "Customer", "Customer"},
    {"VendorRef", "Vendor", "Vendor"},
    {"PrefVendorRef", "Vendor", "Vendor"},
    {"TaxVendorRef", "Vendor", "Vendor"},
    {"EntityRef", "Entity", kAnyName},
    {"ShipToEntityRef", "Entity", kAnyName},
    {"SalesRepEntityRef", "Entity", "Employee Vendor OtherName"},
    {"ItemRef", "Item", kAnyItem},
    {"ItemSalesTaxRef", "Item", "ItemSalesTax"},
    {"AccountRef", "Account", kAccount},
    {"IncomeAccountRef", "Account", kAccount},
    {"COGSAccountRef", "Account", kAccount},
    {"AssetAccountRef", "Account", kAccount},
    {"ExpenseAccountRef", "Account", kAccount},
    {"DepositToAccountRef", "Account", kAccount},
    {"OverrideItemAccountRef", "Account", kAccount},
    {"DiscountAccountRef", "Account", kAccount},
    {"ARAccountRef", "AR Account", kAccount},
    {"APAccountRef", "AP Account", kAccount},
    {"TermsRef", "Terms", "StandardTerms"},
    {"SalesRepRef", "Sales Rep", "SalesRep"},
    {"SalesTaxCodeRef", "Sales Tax Code", "SalesTaxCode"},
    {"CustomerSalesTaxCodeRef", "Sales Tax Code", "SalesTaxCode"},
    {"PaymentMethodRef", "Payment Method", "PaymentMethod"},
    {"PreferredPaymentMethodRef", "Payment Method", "PaymentMethod"},
    {"ShipMethodRef", "Ship Method", "ShipMethod"},
    {"CustomerMsgRef", "Customer Message", "CustomerMsg"},
    {"JobTypeRef", "Job Type", "JobType"},
};

const Reference* referenceCalled(std::string_view field) {
    const auto* found =
        std::find_if(std::begin(kReferences), std::end(kReferences), [&](const Reference& each) {
            return each.field == field;
        });
    return found == std::end(kReferences) ? nullptr : found;
}

bool isOneOf(std::string_view kinds, std::string_view kind) {
    const auto words = split(kinds, ' ');
    return std::find(words.begin(), words.end(), kind) != words.end();
}

/// The entry that a reference names. An id decides before a name.
Entry* lookUp(Lists& lists, const Element& element, std::string_view kinds) {
    const std::string_view listId = element.at("ListID");
    if (!listId.empty()) {
        if (!isIdForm(listId)) {
            throw StatusError(
                3000,
                "The given object ID " + quoted(listId) + " in the field \"ListID\" is invalid."
            );
        }
        return lists.byListId(listId);
    }
    const ListKind* first = listKind(split(kinds, ' ').front());
    return first == nullptr ? nullptr : lists.byName(first->space, element.at("FullName"));
}

void resolveOne(Lists& lists, Element& element, std::string_view kinds, std::string_view record) {
    Entry* entry = lookUp(lists, element, kinds);
    if (entry == nullptr || !isOneOf(kinds, entry->kind->kind)) {
        const std::string_view listId = element.at("ListID");
        const std::string sent = quoted(listId.empty() ? trimmed(element.at("FullName")) : listId);
        if (element.name == "ParentRef") {
            throw StatusError(
                3130,
                "There is an invalid reference to the parent " + sent + " in the " +
                    std::string(record) + " list."
            );
        }
        const Reference* reference = referenceCalled(element.name);
        std::string_view label = element.name;
        removeSuffix(label, "Ref");
        throw StatusError(
            3140,
            "There is an invalid reference to QuickBooks " +
                std::string(reference == nullptr ? label : reference->label) + " " + sent +
                " in the " + std::string(record) + "." +
                programSays("Invalid argument.  The specified record does not exist in the list.")
        );
    }
    element.children = {Element{"ListID", entry->listId, {}}};
}

}  // namespace

bool isReference(const Element& element) {
    return element.name.ends_with("Ref") && !element.children.empty() &&
           std::all_of(element.children.begin(), element.children.end(), [](const Element& child) {
               return child.name == "ListID" || child.name == "FullName";
           });
}

std::string_view kindsOfReference(std::string_view field) {
    const Reference* reference = referenceCalled(field);
    return reference == nullptr ? std::string_view() : reference->kinds;
}

void resolveReferences(Lists& lists, Element& fields, std::string_view record) {
    for (Element& child : fields.children) {
        if (!isReference(child)) {
            resolveReferences(lists, child, record);
        } else if (!child.at("ListID").empty() || !trimmed(child.at("FullName")).empty()) {
            // The parent of an entry is of the entry's own kind.
            resolveOne(
                lists,
                child,
                child.name == "ParentRef" ? record : kindsOfReference(child.name),
                record
            );
        } else {
            child.children.clear();
        }
    }
}

Entry* referenced(Lists& lists, const Element& fields, std::string_view path) {
    return lists.byListId(fields.at(std::string(path) + "/ListID"));
}

void showReferences(Lists& lists, Element& fields) {
    for (Element& child : fields.children) {
        if (!isReference(child)) {
            showReferences(lists, child);
        } else if (const Entry* entry = lists.byListId(child.at("ListID"))) {
            child.set("FullName", entry->fullName);
        }
    }
}

}  // namespace companyfile
