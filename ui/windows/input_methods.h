#pragma once

// Windows that the calling thread makes from now on have no input method. Nobody writes into an
// alert: its letters are shortcuts, which an input method would take for the beginning of a word,
// and every process with windows would carry the method's own window and libraries, 1 MB of them.
void keepInputMethodsOut() noexcept;
