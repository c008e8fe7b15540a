#include "util/qbxml_schema.h"

#include "qbxml_schema_text.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <stdexcept>

namespace util {

namespace {

/// One line of the text: its depth (two blanks a step) and its words.
struct Line {
    std::size_t depth = 0;
    std::vector<std::string_view> words;
};

/// A position in a list of lines; lines of the same list are read one after the other.
struct Cursor {
    const std::vector<Line>& lines;
    std::size_t next = 0;

    [[nodiscard]] bool atDepth(std::size_t depth) const {
        return next < lines.size() && lines[next].depth == depth;
    }
};

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        if (end > 0) {
            pieces.push_back(text.substr(0, end));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return pieces;
}

std::vector<std::string> splitWords(std::string_view text) {
    const auto pieces = split(text, ',');
    return {pieces.begin(), pieces.end()};
}

std::vector<Line> readLines(std::string_view text) {
    std::vector<Line> lines;
    for (const std::string_view row : split(text, '\n')) {
        if (row.front() != '#') {
            const std::size_t blanks = std::min(row.find_first_not_of(' '), row.size());
            lines.push_back({blanks / 2, split(row, ' ')});
        }
    }
    return lines;
}

[[noreturn]] void refuse(std::string_view word) {
    throw std::logic_error("qbXML schema: not understood: " + std::string(word));
}

template <class Number>
Number readNumber(std::string_view text) {
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) {
        refuse(text);
    }
    return number;
}

/// "c1.2": group c1, alternative 2.
void readPlace(std::string_view text, std::string& choice, int& alternative) {
    const std::size_t point = text.find('.');
    if (point == std::string_view::npos) {
        refuse(text);
    }
    choice = std::string(text.substr(0, point));
    alternative = readNumber<int>(text.substr(point + 1));
}

struct FieldMark {
    std::string_view name;
    void (*read)(SchemaField& field, std::string_view value);
};

constexpr FieldMark kFieldMarks[] = {
    {"required", [](SchemaField& field, std::string_view) { field.required = true; }},
    {"repeats", [](SchemaField& field, std::string_view) { field.repeats = true; }},
    {"macro", [](SchemaField& field, std::string_view) { field.macro = true; }},
    {"max",
     [](SchemaField& field, std::string_view value) { field.maxLength = readNumber<int>(value); }},
    {"min",
     [](SchemaField& field, std::string_view value) { field.minValue = readNumber<long>(value); }},
    {"most",
     [](SchemaField& field, std::string_view value) { field.maxValue = readNumber<long>(value); }},
    {"since", [](SchemaField& field, std::string_view value) { field.since = std::string(value); }},
    {"enum", [](SchemaField& field, std::string_view value) { field.words = splitWords(value); }},
    {"in",
     [](SchemaField& field, std::string_view value) {
         readPlace(value, field.choice, field.alternative);
     }},
};

/// The part of "name=value" behind the sign; empty for a bare mark.
std::string_view valueOf(std::string_view mark) {
    const std::size_t sign = mark.find('=');
    return sign == std::string_view::npos ? std::string_view() : mark.substr(sign + 1);
}

void readMark(SchemaField& field, std::string_view mark) {
    const std::string_view name = mark.substr(0, mark.find('='));
    const auto* const found =
        std::find_if(std::begin(kFieldMarks), std::end(kFieldMarks), [&](const FieldMark& row) {
            return row.name == name;
        });
    if (found == std::end(kFieldMarks)) {
        refuse(mark);
    }
    found->read(field, valueOf(mark));
}

SchemaChoice readChoice(const Line& line) {
    SchemaChoice choice;
    choice.id = std::string(line.words.at(1));
    for (std::size_t index = 2; index < line.words.size(); ++index) {
        const std::string_view mark = line.words[index];
        if (mark == "required") {
            choice.required = true;
        } else if (mark == "repeats") {
            choice.repeats = true;
        } else if (mark.starts_with("in=")) {
            readPlace(valueOf(mark), choice.insideChoice, choice.insideAlternative);
        } else {
            refuse(mark);
        }
    }
    return choice;
}

/// Reads the lines of one list with everything below them; `foreign` takes the lines of that kind.
void readList(
    Cursor& cursor,
    std::size_t depth,
    std::vector<SchemaField>& fields,
    std::vector<SchemaChoice>& choices,
    std::vector<std::string>& foreign
) {
    while (cursor.atDepth(depth)) {
        const Line& line = cursor.lines[cursor.next++];
        if (line.words.front() == "choice") {
            choices.push_back(readChoice(line));
            continue;
        }
        if (line.words.front() == "foreign") {
            foreign.emplace_back(line.words.at(1));
            continue;
        }
        SchemaField field;
        field.name = std::string(line.words.front());
        field.type = std::string(line.words.at(1));
        std::for_each(line.words.begin() + 2, line.words.end(), [&](std::string_view mark) {
            readMark(field, mark);
        });
        readList(cursor, depth + 1, field.fields, field.choices, foreign);
        fields.push_back(std::move(field));
    }
}

/// "request NAME BODY attributes=..." and the list below it.
SchemaRequest readRequest(Cursor& cursor) {
    const Line& line = cursor.lines[cursor.next++];
    SchemaRequest request;
    request.name = std::string(line.words.at(1));
    request.body = line.words.at(2) == "-" ? "" : std::string(line.words.at(2));
    if (line.words.size() > 3) {
        request.attributes = splitWords(valueOf(line.words[3]));
    }
    readList(cursor, 1, request.fields, request.choices, request.foreign);
    return request;
}

std::vector<SchemaRequest> readAll(std::string_view text) {
    const std::vector<Line> lines = readLines(text);
    Cursor cursor{lines};
    std::vector<SchemaRequest> requests;
    while (cursor.next < lines.size()) {
        const Line& line = lines[cursor.next];
        if (line.depth == 0 && line.words.front() == "version") {
            ++cursor.next;
        } else if (line.depth == 0 && line.words.front() == "request") {
            requests.push_back(readRequest(cursor));
        } else {
            refuse(line.words.front());
        }
    }
    return requests;
}

template <class Entry>
const Entry* findByName(const std::vector<Entry>& entries, std::string_view name) {
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) {
        return entry.name == name;
    });
    return found == entries.end() ? nullptr : &*found;
}

}  // namespace

const std::vector<SchemaRequest>& schemaRequests() {
    static const std::vector<SchemaRequest> kRequests = readAll(kQbxmlSchemaText);
    return kRequests;
}

const SchemaRequest* schemaRequest(std::string_view name) {
    return findByName(schemaRequests(), name);
}

const SchemaField* schemaField(const std::vector<SchemaField>& fields, std::string_view name) {
    return findByName(fields, name);
}

}  // namespace util
