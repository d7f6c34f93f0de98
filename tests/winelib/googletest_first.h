// Read before every test source of a Winelib build. GoogleTest is one of Linux there and must not
// see what says Windows; the test's own lines must.
#pragma once

#undef _WIN32
#include <gtest/gtest.h>
#define _WIN32
