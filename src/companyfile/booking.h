#pragma once

#include "companyfile/ledger.h"

#include <string_view>

namespace companyfile {

/// The fields of one added transaction, references resolved, on their way into the books.
struct Entering {
    Ledger& ledger;
    Transaction& transaction;
    Status& status;  ///< takes a warning for what is left out
};

/// Adds a booking: debit above zero, credit below; nothing for zero.
void post(Transaction& transaction, const Entry& account, util::Money amount, const Entry* name);
/// Writes a transaction and changes the balances, stock and costs that it touches.
/// @throws StatusError 3180 when its bookings do not balance.
void enter(Ledger& ledger, Transaction& transaction);
/// Takes the effects of a transaction back and removes it.
void takeBack(Ledger& ledger, const Transaction& transaction);

/// The account that `field` of a transaction names, else the one for `special`.
Entry&
accountOf(Ledger& ledger, const Element& fields, std::string_view field, std::string_view special);
/// The account that takes what an item brings when it is sold, or costs when it is bought; null:
/// none.
Entry* incomeAccount(Ledger& ledger, const Element& line, const Entry& item);
Entry* expenseAccount(Ledger& ledger, const Element& line, const Entry& item);

/// True for an account that the money of a sale or payment can go to.
bool takesDeposits(const Entry& account);

// How the kinds of transactions become lines and bookings.
void bookSale(const Entering& entering);
void bookJournal(const Entering& entering);
void bookPayment(const Entering& entering);
void bookPurchase(const Entering& entering);

/// Quantity, rate and amount of a line, each derived from the others where it was not sent.
/// @param rateField  "Rate" or "Cost".  @param price  what the item costs when nothing is told.
void deriveAmount(Element& line, std::string_view rateField, Decimal price);
/// Fails with 3210 for an address of more lines than can be printed.
void checkAddresses(const Element& fields);

/// Books what a new entry brings with it: `amount` on `account` against `other`.
void bookOpening(Ledger& ledger, std::string_view date, const Posting& posting, const Entry& other);
/// Books the stock that a new inventory item begins with.
void bookStock(Ledger& ledger, const Entry& item, const Element& sent);

}  // namespace companyfile
