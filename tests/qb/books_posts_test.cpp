#include "db/nuvDBSM_SalesHead.h"
#include "qb/books_requests.h"
#include "qb/journal_and_payments.h"
#include "qb/smQB_Utilities.h"
#include "support/expected_file.h"

#include <regex>

namespace {

using testing_support::kGoneText;
using testing_support::Log;
using testing_support::Post;
using testing_support::sale;
using testing_support::serverGone;

/// Ids depend on how much the template holds.
std::string withoutIds(const std::string& document) {
    static const std::regex kIds("<(ListID|EditSequence)>[0-9A-F-]+<");
    return std::regex_replace(document, kIds, "<$1>#<");
}

class Books : public testing_support::ShopBooks {
protected:
    /// The texts that a routine leaves behind after the company file said `raw`.
    void expectTold(const Post& post, const std::string& raw, const std::string& box, bool read) {
        const std::string text = post.literal + raw;
        const bool boxed = post.element == "SalesRepAdd";
        EXPECT_EQ(gsQBStatusMessage, text);
        EXPECT_EQ(boxes(), "NUV Brevane|" + box + (boxed ? " / NUV Brevane|" + text : ""));
        const bool twice = post.log == Log::rawAndText && read;
        const std::string log = twice ? raw + " / " + text : text;
        EXPECT_EQ(logLines(), post.log == Log::nothing ? "" : log);
    }
};

TEST_F(Books, growWithEachRequestAndTellWhatFailed) {
    std::string grown;
    for (const Post& post : testing_support::posts()) {
        SCOPED_TRACE(post.name);
        faults->failAt(1, testing_support::FaultPoint::before, serverGone(), post.element + "Rq");
        EXPECT_EQ(post.call(false), post.hasResult ? kNo : kYes);
        expectTold(post, kGoneText, kGoneText, false);
        EXPECT_EQ(changes(), "") << "nothing was sent";

        const std::string& done = post.done;
        EXPECT_EQ(post.call(false), done.empty() ? kYes : kNo);
        testing_support::expectFile(
            "qb/" + post.name + ".xml", withoutIds(faults->documents.back())
        );
        grown += post.name + "\n" + changes() + "\n";
        if (done.empty()) {
            EXPECT_EQ(gsQBStatusMessage + boxes() + logLines(), "");
        } else {
            expectTold(post, done, done + "Getting Request", true);
        }

        EXPECT_EQ(post.call(true), post.hasResult ? kNo : kYes);
        expectTold(post, post.refusal, post.refusal + "Getting Request", true);
        EXPECT_EQ(changes(), "") << "a refusal leaves nothing behind";
        expectSound();
    }
    testing_support::expectFile("qb/books.txt", grown);
}

TEST_F(Books, tellWhyTheSetOfARequestWasNotMade) {
    for (const Post& post : testing_support::posts()) {
        const std::string& element = post.element;
        if (element == "JournalEntryAdd") {
            continue;  // it joins the set that its caller made
        }
        SCOPED_TRACE(post.name);
        const bool looksFirst = element.ends_with("Mod");
        faults->failAt(
            looksFirst ? 2 : 1, testing_support::FaultPoint::before, serverGone(), "<HostQueryRq"
        );
        EXPECT_EQ(post.call(false), post.hasResult ? kNo : kYes);
        const std::string text = post.failed + "The server is gone.";
        EXPECT_EQ(gsQBStatusMessage, text);
        EXPECT_EQ(logLines(), post.log == Log::nothing ? "" : text);
    }
    EXPECT_EQ(changes(), "");
}

TEST_F(Books, holdASaleWhoseAnswerWasLost) {
    growLists();
    for (const Post& post : testing_support::posts()) {
        if (post.log == Log::nothing) {
            continue;
        }
        SCOPED_TRACE(post.name);
        faults->failAt(1, testing_support::FaultPoint::after, serverGone(), post.element + "Rq");
        post.call(false);
        expectTold(post, kGoneText, kGoneText, false);
        EXPECT_NE(changes(), "") << "the work was done before the answer was lost";
    }
    clsQBSales found = sale(false, "0000123");
    EXPECT_EQ(found.SalesReceiptSearchRq(), kYes);
    gSalesHead.Invoice = std::string_view("0000126");
    EXPECT_EQ(gfbReceivePayment_search(), kYes);
    expectSound();
}

}  // namespace
