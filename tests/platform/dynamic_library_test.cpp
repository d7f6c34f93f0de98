#include "platform/dynamic_library.h"

#include "system.h"

#include <gtest/gtest.h>

namespace {

using platform::DynamicLibrary;

TEST(DynamicLibraryTest, ALibraryGivesItsFunctions) {
    const DynamicLibrary library(contract::knownLibrary());

    EXPECT_NE(library.handle(), nullptr);
    EXPECT_NE(library.function(contract::knownFunction()), nullptr);
}

TEST(DynamicLibraryTest, AFunctionThatIsNotExportedIsNull) {
    const DynamicLibrary library(contract::knownLibrary());

    EXPECT_EQ(library.function("NeverExported"), nullptr);
}

TEST(DynamicLibraryTest, AMissingLibraryHasNoFunctions) {
    const DynamicLibrary library(L"contract-never-made.dll");

    EXPECT_EQ(library.handle(), nullptr);
    EXPECT_EQ(library.function(contract::knownFunction()), nullptr);
}

}  // namespace
