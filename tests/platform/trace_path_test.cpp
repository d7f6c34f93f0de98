#include "platform/trace_path.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr std::uint32_t kProcess = 4711;

bool variable(const std::wstring& name, std::wstring& value) {
    if (name == L"TEMP") value = L"C:\\T%p";
    if (name == L"programdata") value = L"D:\\Data";
    return !value.empty();
}

std::wstring path(const wchar_t* pattern) {
    return platform::tracePath(pattern, kProcess, variable);
}

TEST(TracePathTest, AnOrdinaryPathStays) {
    EXPECT_EQ(path(L"C:\\Logs\\monitor.txt"), L"C:\\Logs\\monitor.txt");
    EXPECT_EQ(path(L""), L"");
}

TEST(TracePathTest, AVariableBecomesItsValueAndTheValueStays) {
    EXPECT_EQ(path(L"%TEMP%\\a.txt"), L"C:\\T%p\\a.txt");
}

TEST(TracePathTest, PercentPBecomesTheNumberOfTheProcess) {
    EXPECT_EQ(path(L"C:\\%p.txt"), L"C:\\4711.txt");
    EXPECT_EQ(path(L"%p-%p%TEMP%"), L"4711-4711C:\\T%p");
}

TEST(TracePathTest, AVariableWhoseNameBeginsWithPIsAVariable) {
    EXPECT_EQ(path(L"%programdata%\\%p"), L"D:\\Data\\4711");
}

TEST(TracePathTest, OtherPerCentSignsStay) {
    EXPECT_EQ(path(L"100%"), L"100%");
    EXPECT_EQ(path(L"%nobody%%"), L"%nobody%%");
    EXPECT_EQ(path(L"%"), L"%");
}

}  // namespace
