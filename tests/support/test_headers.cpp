// Compiled for its precompiled header only: see tests/CMakeLists.txt.
