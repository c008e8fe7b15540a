#pragma once

#include "qb/books_fixture.h"
#include "qb/clsQBEmployee.h"
#include "qb/clsQBInventory.h"
#include "qb/clsQBPO.h"
#include "qb/clsQBSales.h"
#include "util/legacy_bool.h"

#include <functional>
#include <string>
#include <vector>

/// What a shop posts, one routine for each request that changes the company file.
namespace testing_support {

/// What the run log gets of a failure.
enum class Log { nothing, text, rawAndText };

/// One request that changes the company file, in the order in which a shop's books grow.
struct Post {
    std::string name;     ///< of its expected document, below tests/data/qb
    std::string element;  ///< of its document
    std::function<LegacyBool(bool flawed)> call;
    std::string literal;  ///< in front of the texts of the company file
    std::string refusal;
    Log log = Log::nothing;
    bool hasResult = true;
    std::string done;    ///< text of the company file when it carried the request out
    std::string failed;  ///< stands in front of an error's text when no set was made
};

/// All of them, in the order in which a shop's books grow.
const std::vector<Post>& posts();

// Some of them alone, and the records that they send. `flawed` makes the company file refuse a
// record; what is added to a list needs no flaw, because its name is in use the second time.
LegacyBool addVendor(bool flawed);
LegacyBool addCustomer(bool flawed);
LegacyBool addStock(bool flawed);
LegacyBool addOrder(bool flawed);
clsQBInventory item(const char* name);
clsQBEmployee employee(const char* name);
clsQBPO& order(bool flawed);
clsQBSales sale(bool flawed, const char* ticket);

/// The sentence of the company file about a reference to what is not there.
std::string noRecord(const std::string& kind, const std::string& name, const std::string& where);

/// The books of the shop: sales are taxed by the item "A".
class ShopBooks : public BooksTest {
protected:
    ShopBooks();
    /// Makes everything that the shop's sales refer to.
    void growLists();
};

}  // namespace testing_support
