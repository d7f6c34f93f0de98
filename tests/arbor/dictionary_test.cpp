#include "arbor/dictionary.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using Words = arbor::dictionary<std::wstring, int*, int, 2147483647, 1>;
// Has so few symbols that a test can use them all: 2 to 5, then 1, then the gaps between them.
using FewSymbols = arbor::dictionary<std::wstring, int*, int, 5, 1>;

int one = 1;
int two = 2;

std::wstring key(int number) {
    return L"key " + std::to_wstring(number);
}

template <typename Get>
std::string errorOf(Get get) {
    try {
        get();
    } catch (const std::logic_error& error) {
        return error.what();
    }
    return "no error";
}

}  // namespace

// Every message carries a dictionary, so each byte of an entry is five in every message.
TEST(DictionaryTest, EachOfTheFiveEntriesInsideHasThirtyTwoBytes) {
    constexpr std::size_t kEntries = std::size_t{5} * 32;
    // The table, the array's begin, size and capacity, the orders; the two symbols share the last.
    constexpr std::size_t kWords = 6;

    EXPECT_EQ(sizeof(Words), kEntries + kWords * sizeof(void*));
}

TEST(DictionaryTest, FirstKeyGetsSymbolTwo) {
    Words words;

    EXPECT_EQ(words.insert(L"a", &one), 2);
    EXPECT_EQ(words.insert(L"b", &two), 3);
}

TEST(DictionaryTest, ValueIsFoundByKeyAndBySymbol) {
    Words words;
    const int symbol = words.insert(L"a", &one);

    EXPECT_EQ(words.get(L"a"), &one);
    EXPECT_EQ(words.get(symbol), &one);
    EXPECT_EQ(words.symbolOf(L"a"), symbol);
}

TEST(DictionaryTest, KeysAreCaseSensitive) {
    Words words;
    words.insert(L"Key", &one);

    EXPECT_TRUE(words.contains(L"Key"));
    EXPECT_FALSE(words.contains(L"key"));
    EXPECT_FALSE(words.contains(L"Ke"));
    EXPECT_FALSE(words.contains(L"Keys"));
}

TEST(DictionaryTest, AbsentFullKeyRaisesALogicErrorThatSaysSo) {
    Words words;

    EXPECT_EQ(errorOf([&] { static_cast<void>(words.get(L"a")); }),
              "[<dictionary>::get] full key not found");
}

TEST(DictionaryTest, AbsentSymbolRaisesALogicErrorThatSaysSo) {
    Words words;

    EXPECT_EQ(errorOf([&] { static_cast<void>(words.get(2)); }),
              "[<dictionary>::get] symbolic key not found");
}

TEST(DictionaryTest, GetWithDefaultAnswersTheDefaultForAbsentKeys) {
    Words words;
    words.insert(L"a", &one);

    EXPECT_EQ(words.get(Words::KeyView(L"b"), &two), &two);
    EXPECT_EQ(words.get(99, &two), &two);
    EXPECT_EQ(words.get(Words::KeyView(L"a"), &two), &one);
    EXPECT_EQ(words.get(2, &two), &one);
}

TEST(DictionaryTest, InsertingAPresentKeyStoresNothingAndAnswersItsSymbol) {
    Words words;
    const int symbol = words.insert(L"a", &one);

    EXPECT_EQ(words.insert(L"a", &two), symbol);
    EXPECT_EQ(words.get(L"a"), &one);
    EXPECT_EQ(words.size(), 1U);
}

TEST(DictionaryTest, EraseRemovesKeyAndSymbol) {
    Words words;
    const int symbol = words.insert(L"a", &one);

    EXPECT_TRUE(words.erase(L"a"));
    EXPECT_FALSE(words.contains(L"a"));
    EXPECT_FALSE(words.contains(symbol));
    EXPECT_FALSE(words.erase(L"a"));
}

TEST(DictionaryTest, ErasedSymbolIsNotIssuedAgainWhileHigherOnesAreLeft) {
    Words words;
    words.insert(L"a", &one);
    words.erase(L"a");

    EXPECT_EQ(words.insert(L"a", &one), 3);
}

TEST(DictionaryTest, SymbolsRiseThenFallThenFillGapsThenEnd) {
    FewSymbols words;
    std::vector<int> issued;
    for (int number = 0; number < 5; ++number)
        issued.push_back(words.insert(key(number), &one));
    EXPECT_EQ(issued, (std::vector<int>{2, 3, 4, 5, 1}));

    EXPECT_EQ(words.insert(L"none left", &two), FewSymbols::kNoSymbol);
    EXPECT_FALSE(words.contains(L"none left"));

    words.erase(key(1));
    EXPECT_EQ(words.insert(L"fills the gap", &two), 3);
    EXPECT_EQ(words.get(L"fills the gap"), &two);
}

TEST(DictionaryTest, LargestAndSmallestSymbolAreNotReusedAsGaps) {
    FewSymbols words;
    for (int number = 0; number < 5; ++number)
        words.insert(key(number), &one);
    words.erase(key(3));  // has symbol 5, the largest
    words.erase(key(4));  // has symbol 1, the smallest

    EXPECT_EQ(words.insert(L"no gap between", &two), FewSymbols::kNoSymbol);
}

TEST(DictionaryTest, NotedSymbolMovesBothBounds) {
    FewSymbols words;

    EXPECT_EQ(words.noteSymbol(4), 4);
    EXPECT_EQ(words.allocateSymbol(), 5);
    EXPECT_EQ(words.allocateSymbol(), 3);
    EXPECT_EQ(words.allocateSymbol(), 2);
    EXPECT_EQ(words.allocateSymbol(), 1);
}

TEST(DictionaryTest, EntriesAreVisitedInOrderOfTheirKeys) {
    Words words;
    for (const wchar_t* name : {L"b", L"B", L"a", L"ab", L"", L"c"})
        words.insert(name, &one);

    std::wstring order;
    words.forEach([&](Words::KeyView name, int, int*) {
        order += name;
        order += L"|";
    });

    EXPECT_EQ(order, L"|B|a|ab|b|c|");
}

TEST(DictionaryTest, ManyEntriesAreAllFoundByKeyAndBySymbol) {
    Words words;
    std::vector<int> values(200);
    std::vector<int> symbols;
    for (int number = 0; number < 200; ++number) {
        const int shuffled = number * 77 % 200;
        values[static_cast<std::size_t>(shuffled)] = shuffled;
        symbols.push_back(words.insert(key(shuffled), &values[static_cast<std::size_t>(shuffled)]));
    }

    for (int number = 0; number < 200; ++number) {
        EXPECT_EQ(*words.get(key(number)), number);
        EXPECT_EQ(*words.get(symbols[static_cast<std::size_t>(number)]), number * 77 % 200);
    }
}

TEST(DictionaryTest, ExchangeKeepsKeyAndSymbol) {
    Words words;
    const int symbol = words.insert(L"a", &one);

    const Words::Taken old = words.exchange(symbol, &two);

    EXPECT_EQ(old.symbol, symbol);
    EXPECT_EQ(old.value, &one);
    EXPECT_EQ(words.get(L"a"), &two);
    EXPECT_EQ(words.symbolOf(L"a"), symbol);
}

TEST(DictionaryTest, ExchangeOfAnAbsentSymbolStoresNothing) {
    Words words;

    EXPECT_FALSE(words.exchange(2, &two).found());
    EXPECT_EQ(words.size(), 0U);
}

TEST(DictionaryTest, SetKeepsTheSymbolOfAPresentKeyAndGivesItsOldValueOut) {
    Words words;
    const int symbol = words.insert(L"a", &one);

    Words::Taken old;
    EXPECT_EQ(words.set(L"a", &two, old), symbol);

    EXPECT_EQ(old.value, &one);
    EXPECT_EQ(words.get(symbol), &two);
    EXPECT_EQ(words.get(L"a"), &two);
}

TEST(DictionaryTest, SetInsertsAnAbsentKey) {
    Words words;

    Words::Taken old;
    EXPECT_EQ(words.set(L"a", &one, old), 2);

    EXPECT_FALSE(old.found());
    EXPECT_EQ(words.get(L"a"), &one);
}

TEST(DictionaryTest, FewEntriesAreVisitedInOrderOfTheirKeysToo) {
    Words words;
    for (const wchar_t* name : {L"b", L"a", L"c"})
        words.insert(name, &one);

    std::wstring order;
    words.forEach([&](Words::KeyView name, int, int*) { order += name; });

    EXPECT_EQ(order, L"abc");
}

TEST(DictionaryTest, ReplacedKeyGetsANewSymbolAndGivesItsOldValueOut) {
    Words words;
    words.insert(L"a", &one);

    Words::Taken old;
    EXPECT_EQ(words.replace(L"a", &two, old), 3);

    EXPECT_TRUE(old.found());
    EXPECT_EQ(old.value, &one);
    EXPECT_EQ(words.get(L"a"), &two);
    EXPECT_EQ(words.size(), 1U);
}

TEST(DictionaryTest, ReplacingAnAbsentKeyInsertsIt) {
    Words words;

    Words::Taken old;
    EXPECT_EQ(words.replace(L"a", &one, old), 2);

    EXPECT_FALSE(old.found());
    EXPECT_EQ(words.get(L"a"), &one);
}

TEST(DictionaryTest, ReplacedKeyGetsItsOwnSymbolBackWhenThatIsTheOnlyGap) {
    FewSymbols words;
    for (int number = 0; number < 5; ++number)
        words.insert(key(number), &one);

    FewSymbols::Taken old;
    EXPECT_EQ(words.replace(key(1).c_str(), &two, old), 3);
}

TEST(DictionaryTest, ReplacedKeyIsGoneWhenNoSymbolIsLeft) {
    FewSymbols words;
    for (int number = 0; number < 5; ++number)
        words.insert(key(number), &one);

    FewSymbols::Taken old;
    EXPECT_EQ(words.replace(key(3).c_str(), &two, old),
              FewSymbols::kNoSymbol);  // symbol 5 is the largest and so not a gap

    EXPECT_EQ(old.value, &one);
    EXPECT_FALSE(words.contains(key(3)));
}

TEST(DictionaryTest, KeysOfAnyLengthAreKeptApart) {
    Words words;
    const std::wstring sixteen(16, L'x');
    const std::wstring seventeen(17, L'x');
    const std::wstring endsOtherwise = sixteen + L'y';
    words.insert(sixteen, &one);
    words.insert(seventeen, &two);

    EXPECT_EQ(words.get(sixteen), &one);
    EXPECT_EQ(words.get(seventeen), &two);
    EXPECT_FALSE(words.contains(endsOtherwise));
}

TEST(DictionaryTest, LongKeysSurviveTheRemovalOfTheirNeighbours) {
    Words words;
    const auto longKey = [](int number) { return std::wstring(20, L'x') + key(number); };
    for (int number = 0; number < 12; ++number)
        words.insert(longKey(number), number % 2 == 0 ? &one : &two);

    for (int number = 0; number < 12; number += 2)
        EXPECT_TRUE(words.erase(longKey(number)));

    for (int number = 1; number < 12; number += 2)
        EXPECT_EQ(words.get(longKey(number)), &two);
    EXPECT_EQ(words.size(), 6U);
}

TEST(DictionaryTest, EntriesStayFindableWhateverIsAddedReplacedAndRemoved) {
    Words words;
    std::map<std::wstring, std::pair<int, int*>> expected;  // symbol and value of each key
    std::uint32_t random = 1;
    for (int step = 0; step < 3000; ++step) {
        random = random * 1664525 + 1013904223;
        const std::wstring name = key(static_cast<int>(random >> 16) % 40);
        Words::Taken old;
        switch (random >> 30) {
            case 0:
                EXPECT_EQ(words.take(Words::KeyView(name)).found(), expected.erase(name) == 1);
                break;
            case 1:
                if (const auto at = expected.find(name); at != expected.end()) {
                    EXPECT_EQ(words.take(at->second.first).value, at->second.second);
                    expected.erase(at);
                }
                break;
            case 2:
                expected[name] = {words.replace(name, &one, old), &one};
                break;
            default:
                expected[name] = {words.set(name, &two, old), &two};
        }

        ASSERT_EQ(words.size(), expected.size());
        for (const auto& [present, entry] : expected) {
            ASSERT_EQ(words.symbolOf(Words::KeyView(present)), entry.first);
            ASSERT_EQ(words.get(entry.first), entry.second);
        }
        // The symbol that a replaced entry had is nobody's any more.
        const bool kept = !old.found() || old.symbol == expected[name].first;
        ASSERT_TRUE(kept || !words.contains(old.symbol));
        auto next = expected.begin();
        words.forEach(
            [&](Words::KeyView visited, int, int*) { ASSERT_EQ(visited, next++->first); });
    }
}

TEST(DictionaryTest, DictionaryOfManyEntriesStaysWholeWhenNoSymbolIsLeft) {
    using EightSymbols = arbor::dictionary<std::wstring, int*, int, 8, 1>;
    EightSymbols words;
    for (int number = 0; number < 8; ++number)
        words.insert(key(number), &one);

    EXPECT_EQ(words.insert(L"none left", &two), EightSymbols::kNoSymbol);
    EightSymbols::Taken old;
    EXPECT_EQ(words.replace(key(6), &two, old),
              EightSymbols::kNoSymbol);  // symbol 8 is the largest and so not a gap

    EXPECT_EQ(words.size(), 7U);
    for (const int number : {0, 1, 2, 3, 4, 5, 7})
        EXPECT_TRUE(words.contains(key(number)) &&
                    words.contains(words.symbolOf(Words::KeyView(key(number)))));
    EXPECT_FALSE(words.contains(key(6)));
    EXPECT_FALSE(words.contains(8));
}

TEST(DictionaryTest, ReplacedKeyAmongManyGetsItsOwnSymbolBackWhenThatIsTheOnlyGap) {
    using EightSymbols = arbor::dictionary<std::wstring, int*, int, 8, 1>;
    EightSymbols words;
    for (int number = 0; number < 8; ++number)
        words.insert(key(number), &one);

    EightSymbols::Taken old;
    EXPECT_EQ(words.replace(key(1), &two, old), 3);

    EXPECT_EQ(words.get(3), &two);
}
