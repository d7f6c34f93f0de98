#pragma once

// Code, and string id, of the media type that the printer calls `name`; plain paper for a name that
// it does not know, and for null. Names are exact, case included. Any thread.
int TranslateMediaType(const char* name);

// The media type that the status channel reported last; plain paper before the first report. Main
// thread only.
int currentMediaType();
void setCurrentMediaType(int code);

// String id of the media that a media alert asks for by the last two digits of its status; plain
// paper for a code that no medium has. Any thread.
int mediaTextOfCode(int mediaCode);
