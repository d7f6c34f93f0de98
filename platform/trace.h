#pragma once

#if defined(__GNUC__)
#if defined(__MINGW32__) && !defined(__clang__)
#define PLATFORM_PRINTF_LIKE(text, first) __attribute__((format(gnu_printf, text, first)))
#else
#define PLATFORM_PRINTF_LIKE(text, first) __attribute__((format(printf, text, first)))
#endif
#else
#define PLATFORM_PRINTF_LIKE(text, first)
#endif

// The trace of the program: off unless the environment variable QVSM_TRACE or, without it, the
// machine's setting "TraceFile" names a file, to which each line is appended with its time and
// thread (see decision 0002). Any thread may call; nothing here fails or throws. People search
// traces for their texts, so these are kept to the letter: see decision 0012.
namespace platform {

// One line; a line feed at the end of the text is not doubled. At most kTraceLimit characters.
inline constexpr int kTraceLimit = 2048;
void trace(const char* format, ...) noexcept PLATFORM_PRINTF_LIKE(1, 2);

// From now on `sink` gets every line too, without time and thread; null: nobody. For tests.
using TraceSink = void (*)(const char* line);
void setTraceSink(TraceSink sink) noexcept;

// Writes to the debugger. Only the device interface uses it.
void debugOutput(const char* text) noexcept;

}  // namespace platform
