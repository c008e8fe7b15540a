#pragma once

#include "util/fixed_text.h"

#include <cstdint>

namespace db {

/// One line of free text that belongs to the record `RefID` of the kind `NoteType`.
struct NotesRecord {
    util::FixedText<1> NoteType;
    std::int32_t RefID = 0;
    std::int16_t LineNum = 0;
    util::FixedText<80> NoteText;
};

}  // namespace db

/// The note of the last operation on table 99.
extern db::NotesRecord gNotes;

namespace db {

enum NotesKey : std::int16_t { keyNotesNoteType = 0, keyNotesRefID = 1 };

/// Binds table 99: makes the table when it is missing. Nothing calls it at start.
void bindNotes();

}  // namespace db
