#include "companyfile/ledger.h"

#include "companyfile/text.h"
#include "util/basic_error.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace companyfile {

namespace {

constexpr std::string_view kItemKinds = "ItemInventory ItemNonInventory ItemService "
                                        "ItemOtherCharge ItemDiscount ItemPayment ItemSalesTax";
const std::vector<std::string> kAllVersions = {
    "1.0",
    "1.1",
    "2.0",
    "2.1",
    "3.0",
    "4.0",
    "4.1",
    "5.0",
    "6.0",
    "7.0",
    "8.0",
    "9.0",
    "10.0",
    "11.0",
    "12.0",
    "13.0",
};

bool isQuery(const Request& request) {
    return request.name.ends_with("Query");
}

StatusError notSupported() {
    return {1030, "This request is not supported by this implementation."};
}

Answer dispatchQuery(Ledger& ledger, std::string_view subject, Request& request) {
    if (const TransactionKind* kind = transactionKind(subject)) {
        return queryTransactions(ledger, *kind, request);
    }
    if (subject == "Item") {
        return queryEntries(ledger, kItemKinds, request);
    }
    return queryEntries(ledger, subject == "Terms" ? "StandardTerms" : subject, request);
}

Answer dispatchAdd(Ledger& ledger, std::string_view subject, Request& request) {
    if (const ListKind* kind = listKind(subject)) {
        return addEntry(ledger, *kind, request);
    }
    const TransactionKind* kind = transactionKind(subject);
    if (kind == nullptr) {
        throw notSupported();
    }
    return addTransaction(ledger, *kind, request);
}

Answer dispatch(Ledger& ledger, Request& request, const Document& document) {
    std::string_view subject = request.name;
    if (subject == "HostQuery") {
        return answerHostQuery(ledger, document);
    }
    if (subject == "ListDel") {
        return deleteEntry(ledger, request);
    }
    if (subject == "TxnDel") {
        return deleteTransaction(ledger, request);
    }
    if (removeSuffix(subject, "Query")) {
        return dispatchQuery(ledger, subject, request);
    }
    if (removeSuffix(subject, "Add")) {
        return dispatchAdd(ledger, subject, request);
    }
    const ListKind* kind = removeSuffix(subject, "Mod") ? listKind(subject) : nullptr;
    if (kind == nullptr) {
        throw notSupported();
    }
    return modifyEntry(ledger, *kind, request);
}

/// Drops the elements that the request did not ask for.
void keepWanted(const std::vector<std::string>& wanted, Element& record) {
    if (!wanted.empty()) {
        std::erase_if(record.children, [&](const Element& child) {
            return std::find(wanted.begin(), wanted.end(), child.name) == wanted.end();
        });
    }
}

void writeAttribute(std::string& out, std::string_view name, std::string_view value) {
    out.append(" ").append(name).append("=\"");
    writeEscaped(out, value, true);
    out += '"';
}

void writeAnswer(std::string& out, const Request& request, Answer& answer, bool withData) {
    const std::string name = request.name + "Rs";
    out += '<' + name;
    if (request.hasId) {
        writeAttribute(out, "requestID", request.id);
    }
    writeAttribute(out, "statusCode", std::to_string(answer.status.code));
    writeAttribute(out, "statusSeverity", answer.status.severity());
    writeAttribute(out, "statusMessage", answer.status.message);
    const bool counts =
        request.metaData == "MetaDataOnly" || request.metaData == "MetaDataAndResponseData";
    if (answer.isQuery && counts) {
        writeAttribute(out, "retCount", std::to_string(answer.records.size()));
    }
    if (!withData || answer.records.empty() || request.metaData == "MetaDataOnly") {
        out += " />\n";
        return;
    }
    out += ">\n";
    for (Element& record : answer.records) {
        keepWanted(request.wantedFields, record);
        writeXml(out, record);
        out += '\n';
    }
    out += "</" + name + ">\n";
}

/// The part of a work that one request is: undone unless it was kept.
class Step {
public:
    explicit Step(Database& database) : database_(database) { database_.execute("SAVEPOINT step"); }
    ~Step() {
        if (open_) {
            database_.tryExecute("ROLLBACK TO step");
            database_.tryExecute("RELEASE step");
        }
    }
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;
    void keep() {
        database_.execute("RELEASE step");
        open_ = false;
    }

private:
    Database& database_;
    bool open_ = true;
};

}  // namespace

Ledger::Ledger(const std::string& path, Database::Mode mode)
    : versions(kAllVersions),
      database_(path, mode),
      lists_(database_),
      transactions_(database_),
      tick_(database_.prepare(
          "UPDATE meta SET value = value + 1 WHERE key = 'clock' RETURNING value - 1"
      )),
      readClock_(database_.prepare("SELECT value FROM meta WHERE key = 'clock'")) {
    look([] {});
}

std::int64_t Ledger::now() {
    if (clock) {
        return clock();
    }
    tick_.bind().step();
    const std::int64_t moment = tick_.integer(0);
    tick_.bind();
    return moment;
}

std::string Ledger::today() {
    if (clock) {
        return momentText(clock()).substr(0, 10);
    }
    readClock_.bind().step();
    const std::int64_t moment = readClock_.integer(0);
    readClock_.bind();
    return momentText(moment).substr(0, 10);
}

std::string momentText(std::int64_t seconds) {
    const std::chrono::sys_seconds moment{std::chrono::seconds(seconds)};
    const auto day = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(moment - day);
    std::string text(40, '\0');
    text.resize(static_cast<std::size_t>(std::snprintf(
        text.data(),
        text.size(),
        "%04d-%02u-%02uT%02d:%02d:%02d+00:00",
        static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()),
        static_cast<unsigned>(date.day()),
        static_cast<int>(time.hours().count()),
        static_cast<int>(time.minutes().count()),
        static_cast<int>(time.seconds().count())
    )));
    return text;
}

void Ledger::refresh() {
    const std::int64_t changes = database_.foreignChanges();
    if (stale_ || changes != foreignChanges_) {
        lists_.load();
        transactions_.forget();
        foreignChanges_ = changes;
        stale_ = false;
    }
}

void Ledger::within(bool writes, const std::function<void()>& work) {
    Work unit(database_, writes);
    try {
        refresh();
        work();
        unit.commit();
    } catch (const util::BasicError&) {
        stale_ = true;
        database_.damaged("it holds a number that is too large");
    } catch (...) {
        stale_ = true;
        throw;
    }
}

void Ledger::change(const std::function<void()>& work) {
    within(true, work);
}

void Ledger::look(const std::function<void()>& work) {
    within(false, work);
}

Answer Ledger::carryOut(Request& request, const Document& document) {
    const std::int64_t before = database_.changes();
    try {
        constexpr std::size_t kLongestId = 50;
        if (characterCount(request.id) > kLongestId) {
            throw StatusError(
                1060,
                "The request ID " + quoted(request.id) +
                    " is invalid, possibly too long, max 50 chars."
            );
        }
        if (isQuery(request)) {
            Answer answer = dispatch(*this, request, document);
            answer.isQuery = true;
            return answer;
        }
        Step step(database_);
        Answer answer = dispatch(*this, request, document);
        step.keep();
        return answer;
    } catch (const StatusError& error) {
        return refused(request, error, database_.changes() != before);
    } catch (const util::BasicError&) {
        return refused(request, tooLarge(), database_.changes() != before);
    }
}

Answer Ledger::refused(const Request& request, const StatusError& error, bool isHalfDone) {
    stale_ = stale_ || isHalfDone;
    refresh();
    return {error.status, {}, isQuery(request)};
}

std::string Ledger::exchange(const std::string& text) {
    Document document = readDocument(text, versions);
    std::string out = "<?xml version=\"1.0\" ?>\n<QBXML>\n<QBXMLMsgsRs>\n";
    const auto carryOutAll = [&] {
        bool stopped = false;
        for (Request& request : document.requests) {
            Answer answer;
            if (stopped) {
                answer.status = {3231, "The request has not been processed."};
            } else {
                answer = carryOut(request, document);
                stopped = document.stopOnError && answer.status.severity() == "Error";
            }
            writeAnswer(out, request, answer, document.answerData);
        }
    };
    within(!std::all_of(document.requests.begin(), document.requests.end(), isQuery), carryOutAll);
    return out + "</QBXMLMsgsRs>\n</QBXML>\n";
}

Answer answerHostQuery(const Ledger& ledger, const Document& document) {
    constexpr int kFirstWithCountry = 30;
    const bool full = versionNumber(document.version) >= kFirstWithCountry;
    Element host{"HostRet", {}, {}};
    const auto add = [&](const char* name, std::string_view value) {
        host.children.push_back({name, std::string(value), {}});
    };
    add("ProductName", "Brevane Company File");
    add("MajorVersion", "24");
    add("MinorVersion", "0");
    if (full) {
        add("Country", "US");
    }
    for (const std::string& version : ledger.versions) {
        add("SupportedQBXMLVersion", version);
    }
    if (full) {
        add("IsAutomaticLogin", "false");
        add("QBFileMode", "SingleUser");
    }
    return {{}, {host}, true};
}

}  // namespace companyfile
