#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace util {

/// An exclusive group among the fields of one list: at most one alternative may be taken.
struct SchemaChoice {
    std::string id;            ///< as "c1"
    bool required = false;     ///< one alternative must be taken
    bool repeats = false;      ///< may be taken again and again, alternatives mixed in any sequence
    std::string insideChoice;  ///< id of the group that holds this one; empty: none
    int insideAlternative = 0;  ///< alternative of that group
};

/// One element of a request: its place among its siblings is the wire's order.
struct SchemaField {
    std::string name;
    std::string type;   ///< "STRTYPE", "AMTTYPE", "AGGREGATE", ...
    int maxLength = 0;  ///< characters; 0: no limit stated
    bool required = false;
    bool repeats = false;
    std::string since;   ///< version that introduced it; empty: as old as its request
    std::string choice;  ///< id of its exclusive group; empty: none
    int alternative = 0;
    std::vector<std::string> words;  ///< words of an ENUM
    std::vector<SchemaField> fields;
    std::vector<SchemaChoice> choices;
    long minValue = 0;
    long maxValue = 0;  ///< 0 with minValue 0: no range stated
    bool macro = false;
};

/// One request of the format: fields in wire order.
struct SchemaRequest {
    std::string name;  ///< without "Rq", as "CustomerAdd"
    std::string body;  ///< aggregate that wraps the fields; empty: they stand in the request itself
    std::vector<std::string> attributes;
    std::vector<SchemaField> fields;
    std::vector<SchemaChoice> choices;
    std::vector<std::string> foreign;  ///< paths ("BillAddress.Note") that another edition owns
};

/// All requests of the version that the program speaks, in file order. Read once.
const std::vector<SchemaRequest>& schemaRequests();
/// The request called `name` (without "Rq"); nothing when the version has no such request.
const SchemaRequest* schemaRequest(std::string_view name);
/// The field of a list by name; nothing when there is none.
const SchemaField* schemaField(const std::vector<SchemaField>& fields, std::string_view name);

}  // namespace util
