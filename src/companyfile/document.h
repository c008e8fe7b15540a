#pragma once

#include "companyfile/element.h"
#include "util/qbxml_schema.h"

#include <string>
#include <string_view>
#include <vector>

namespace companyfile {

/// One request of a document, its shape already checked against the schema.
struct Request {
    std::string name;  ///< without "Rq"
    const util::SchemaRequest* schema = nullptr;
    bool hasId = false;
    std::string id;
    std::string metaData;  ///< "", "NoMetaData", "MetaDataOnly", "MetaDataAndResponseData"
    Element fields;        ///< the fields, taken out of the body that wraps them
    std::vector<std::string> wantedFields;  ///< IncludeRetElement; empty: all
};

/// A request document.
struct Document {
    std::string version;  ///< as "6.0"
    bool stopOnError = false;
    bool answerData = true;  ///< false with responseData="includeNone"
    std::vector<Request> requests;
};

/// Reads and checks a document. `versions` are those that it may name.
/// @throws CallError kUnparsable, kUnknownVersion or kNoRollback.
Document readDocument(const std::string& text, const std::vector<std::string>& versions);

/// "6.0" as 60, "13.0" as 130, "CA3.0" as 30; for comparisons of versions.
int versionNumber(std::string_view version);

/// Checks names, order, choices and required elements of `fields` against the schema's list.
/// Elements of another edition pass anywhere. @throws CallError kUnparsable.
void checkShape(const Element& fields, const util::SchemaRequest& request, int version);

/// Fails with kUnparsable.
[[noreturn]] void unparsable();

}  // namespace companyfile
