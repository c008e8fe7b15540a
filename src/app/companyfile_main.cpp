#include "companyfile/company_file.h"

#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using companyfile::CallError;
using companyfile::CompanyFile;

enum Outcome { kDone = 0, kFindings = 1, kFailed = 1, kNoCompanyFile = 2, kWrongCall = 64 };

constexpr const char* kUsage =
    "Makes and inspects company files.\n"
    "\n"
    "  companyfile new FILE [--template retail|retail-summary] [--mapping QBLINK.NUV]\n"
    "      makes a new company file; the mapping's accounts are made with it\n"
    "  companyfile dump FILE      prints everything as JSON\n"
    "  companyfile balance FILE   prints the trial balance\n"
    "  companyfile check FILE     0: sound, 1: findings, 2: not a company file\n";

struct Call {
    std::string command;
    std::string file;
    std::string templateName;
    std::string mapping;
};

/// What the arguments ask for; nothing when they are no call of this program.
std::optional<Call> readCall(const std::vector<std::string>& arguments) {
    if (arguments.size() < 2) {
        return std::nullopt;
    }
    Call call{arguments[0], arguments[1], "", ""};
    const bool isNew = call.command == "new";
    for (std::size_t i = 2; i < arguments.size(); i += 2) {
        const bool isTemplate = arguments[i] == "--template";
        if (!isNew || i + 1 >= arguments.size() || (!isTemplate && arguments[i] != "--mapping")) {
            return std::nullopt;
        }
        (isTemplate ? call.templateName : call.mapping) = arguments[i + 1];
    }
    return call;
}

/// What a file holds; nothing when it cannot be read, as a folder, or is larger than any mapping:
/// there are files without an end.
std::optional<std::string> textOf(const std::string& name) {
    constexpr std::size_t kLargest = std::size_t{64} * 1024 * 1024;
    constexpr std::size_t kPiece = std::size_t{64} * 1024;
    std::ifstream in(name, std::ios::binary);
    std::string text;
    while (in && text.size() <= kLargest) {
        const std::size_t size = text.size();
        text.resize(size + kPiece);
        in.read(text.data() + size, kPiece);
        text.resize(size + static_cast<std::size_t>(in.gcount()));
    }
    return in.eof() ? std::optional(text) : std::nullopt;
}

int makeNew(const Call& call) {
    std::string mapping;
    if (!call.mapping.empty()) {
        const std::optional<std::string> text = textOf(call.mapping);
        if (!text) {
            std::cerr << "The mapping " << call.mapping << " cannot be read.\n";
            return kFailed;
        }
        mapping = *text;
    }
    CompanyFile::create(call.file, call.templateName, mapping);
    return kDone;
}

int dump(const Call& call) {
    std::cout << CompanyFile::open(call.file).dump();
    return kDone;
}

std::string padded(std::string text, std::size_t width, bool right) {
    if (text.size() < width) {
        text.insert(right ? 0 : text.size(), width - text.size(), ' ');
    }
    return text;
}

void printRow(const std::string& account, const std::string& debit, const std::string& credit) {
    constexpr std::size_t kNameWidth = 40;
    constexpr std::size_t kAmountWidth = 16;
    std::cout << padded(account, kNameWidth, false) << padded(debit, kAmountWidth, true)
              << padded(credit, kAmountWidth, true) << '\n';
}

int balance(const Call& call) {
    CompanyFile file = CompanyFile::open(call.file);
    util::Money debits;
    util::Money credits;
    printRow("Account", "Debit", "Credit");
    for (const companyfile::AccountBalance& row : file.trialBalance()) {
        const util::Money amount = row.debit - row.credit;
        if (!row.debit.isZero() || !row.credit.isZero()) {
            const bool debit = amount >= util::Money();
            printRow(row.account, debit ? amount.text(2) : "", debit ? "" : (-amount).text(2));
            (debit ? debits : credits) += amount.abs();
        }
    }
    printRow("Total", debits.text(2), credits.text(2));
    return debits == credits ? kDone : kFindings;
}

int check(const Call& call) {
    const std::vector<std::string> findings = CompanyFile::open(call.file).check();
    for (const std::string& finding : findings) {
        std::cout << finding << '\n';
    }
    std::cout << (findings.empty() ? "The company file is sound.\n" : "");
    return findings.empty() ? kDone : kFindings;
}

struct Command {
    std::string_view name;
    int (*run)(const Call&);
};
constexpr Command kCommands[] = {
    {"new", makeNew},
    {"dump", dump},
    {"balance", balance},
    {"check", check},
};

}  // namespace

int main(int argc, char** argv) {
    const std::optional<Call> call = readCall({argv + 1, argv + argc});
    for (const Command& command : kCommands) {
        if (call && call->command == command.name) {
            try {
                return command.run(*call);
            } catch (const CallError& error) {
                std::cerr << error.text << '\n';
                return call->command == "new" ? kFailed : kNoCompanyFile;
            }
        }
    }
    std::cerr << kUsage;
    return kWrongCall;
}
