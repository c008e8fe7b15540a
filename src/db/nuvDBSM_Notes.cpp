#include "db/nuvDBSM_Notes.h"

#include "db/table_module.h"

db::NotesRecord gNotes;

namespace db {

namespace {

constexpr auto kNotes = table(
    "Notes",
    column("NoteType", "CHAR (1)", &NotesRecord::NoteType),
    column("RefID", "INTEGER", &NotesRecord::RefID),
    column("LineNum", "SMALLINT", &NotesRecord::LineNum),
    column("NoteText", "CHAR (80)", &NotesRecord::NoteText)
);

constexpr KeyPart kNotesKeys[] = {
    {0, "NoteType"},
    {0, "RefID"},
    {0, "LineNum"},
    {1, "RefID"},
};

constexpr std::string_view kNotesIndexes[] = {
    "Create UNIQUE CLUSTERED Index idx_0 On <table>(NoteType, RefID, LineNum);",
    "Create Index idx_1 On <table>(RefID);",
};

constexpr TableTitles kNotesTitles = {"NOTES", "Notes.NUV"};

}  // namespace

const TableRoutines& notesRoutines() {
    static constexpr TableRoutines kRoutines = routinesOf<kNotes, kNotesKeys, gNotes>();
    return kRoutines;
}

void bindNotes() {
    define(tableNotes, kNotes, kNotesTitles, kNotesIndexes);
    makeIfMissing(tableNotes);
}

}  // namespace db
