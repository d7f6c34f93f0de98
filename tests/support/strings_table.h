#pragma once

// Every text of the localized strings library, generated from the language files in strings/.
// Link strings_table. Immutable, any thread may read it.

struct StringRow {
    unsigned id;              // see strings/string_ids.h
    unsigned short language;  // Windows language id: 1033 is English
    const wchar_t* text;      // the wide characters of this system, "\n" between lines
};

// Sorted by language, then by id. No pair of both occurs twice.
extern const StringRow kStringRows[];
extern const unsigned kStringRowCount;
