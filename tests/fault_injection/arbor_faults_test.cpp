// Every allocation of the object model fails in turn: alone, and with all allocations after it.
#include "arbor/abstract_database.h"
#include "arbor/custom_property.h"
#include "arbor/message.h"
#include "arbor/null_property.h"
#include "arbor/property.h"
#include "arbor/property_holder.h"
#include "arbor/wide_key.h"
#include "tests/fault_injection/faults_fixture.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

using arbor::AbstractDatabase;
using arbor::IDatabase;
using arbor::IProperty;
using arbor::Property;
using arbor::PropertyHolder;
using fault_injection::everyAllocation;
using fault_injection::Mode;

namespace {

constexpr char kLongText[] = "a text that is longer than what a string keeps inside itself";
constexpr wchar_t kLongKey[] = L"a key that is longer than what a string keeps inside itself";
constexpr wchar_t kWideText[] = L"wide";

class ArborFaultsTest : public fault_injection::FaultsTest {
protected:
    // `made` must be the text when nothing failed, a property with a null text when only the text's
    // block could not be allocated, and null when no later allocation worked either.
    static void expectNullText(std::unique_ptr<IProperty>& made, long failed, const char* text,
                               std::uint32_t type) {
        if (failed == 0) {
            EXPECT_EQ(made->toString(), text);
        } else if (GetParam() == Mode::FromThenOn) {
            EXPECT_TRUE(made == nullptr);
        } else {
            ASSERT_TRUE(made != nullptr);
            EXPECT_EQ(made->getType(), type);
            EXPECT_EQ(made->getData(), nullptr);
            EXPECT_EQ(made->toString(), "");
            EXPECT_EQ(made->toInt(), 0);
        }
        made.reset();
    }
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(OnceAndForEver, ArborFaultsTest, fault_injection::kBothModes,
                         fault_injection::modeName);

TEST_P(ArborFaultsTest, PropertyThatCannotBeAllocatedIsNull) {
    std::unique_ptr<IProperty> made;
    failEachAllocation([&] { return [&] { made.reset(Property::createInt(5)); }; },
                       [&](long failed) {
                           EXPECT_EQ(made == nullptr, failed != 0);
                           made.reset();
                       },
                       1);
}

// A text and its property share one block. If that cannot be allocated, the code tries to make a
// property alone, which then has a null text.
TEST_P(ArborFaultsTest, TextThatCannotBeCopiedIsANullTextThatReadsAsEmpty) {
    std::unique_ptr<IProperty> made;
    failEachAllocation(
        [&] {
            return [&] { made.reset(Property::createString(kLongText, std::strlen(kLongText))); };
        },
        [&](long failed) { expectNullText(made, failed, kLongText, arbor::PT_STRING); }, 1);
}

TEST_P(ArborFaultsTest, WideTextThatCannotBeCopiedIsANullTextThatReadsAsEmpty) {
    std::unique_ptr<IProperty> made;
    failEachAllocation(
        [&] {
            return [&] { made.reset(Property::createWString(kWideText, std::wcslen(kWideText))); };
        },
        [&](long failed) { expectNullText(made, failed, "wide", arbor::PT_WSTRING); }, 1);
}

TEST_P(ArborFaultsTest, UnitsThatCannotBeCopiedAreANullTextThatReadsAsEmpty) {
    constexpr unsigned char kUnits[] = {'w', 0, 'i', 0, 'd', 0, 'e', 0};
    std::unique_ptr<IProperty> made;
    failEachAllocation(
        [&] { return [&] { made.reset(Property::createUtf16(kUnits, 4)); }; },
        [&](long failed) { expectNullText(made, failed, "wide", arbor::PT_WSTRING); }, 1);
}

TEST_P(ArborFaultsTest, BufferThatCannotBeCopiedIsNullAndKeepsItsStatedSize) {
    std::unique_ptr<IProperty> made;
    failEachAllocation([&] { return [&] { made.reset(Property::createOpaque("abc", 3)); }; },
                       [&](long failed) {
                           if (failed == 1) {
                               EXPECT_EQ(made, nullptr);
                           }
                           if (failed == 2) {
                               ASSERT_NE(made, nullptr);
                               EXPECT_EQ(made->getData(), nullptr);
                               EXPECT_EQ(made->getSize(), 3U);
                           }
                           made.reset();
                       },
                       2);
}

TEST_P(ArborFaultsTest, CloneIsNullOrWhole) {
    const arbor::CustomProperty source("abc", 3, arbor::Guid{1, 2, 3, {}});
    std::unique_ptr<IProperty> made;
    failEachAllocation([&] { return [&] { made.reset(Property::clone(source)); }; },
                       [&](long failed) {
                           EXPECT_EQ(made == nullptr, failed == 1);
                           if (failed == 0) {
                               EXPECT_EQ(std::memcmp(made->getData(), "abc", 3), 0);
                           }
                           made.reset();
                       },
                       2);
}

TEST_P(ArborFaultsTest, NewEntryOfABagIsThereOrTheSetterAnswersFalse) {
    std::unique_ptr<PropertyHolder> bag;
    bool stored = false;
    failEachAllocation(
        [&] {
            bag = std::make_unique<PropertyHolder>();
            stored = false;
            return [&] { stored = bag->setInt(kLongKey, 5); };
        },
        [&](long failed) {
            EXPECT_EQ(stored, failed == 0);
            EXPECT_EQ(bag->getInt(kLongKey, -1), stored ? 5 : -1);
            bag.reset();
        },
        1);
}

TEST_P(ArborFaultsTest, ReplacedValueSurvivesWhenItsSuccessorCannotBeMade) {
    std::unique_ptr<PropertyHolder> bag;
    bool stored = false;
    failEachAllocation(
        [&] {
            bag = std::make_unique<PropertyHolder>();
            bag->setInt(kLongKey, 1);
            stored = false;
            return [&] { stored = bag->setOpaque(kLongKey, "abc", 3); };
        },
        [&](long failed) {
            EXPECT_EQ(stored, failed != 1);
            EXPECT_EQ(bag->getInt(kLongKey, -1), stored ? 0 : 1);
            EXPECT_EQ(bag->getProperty(kLongKey)->getSize(), stored ? 3U : 0U);
            bag.reset();
        },
        2);
}

// A number is kept inside the entry of the bag, in the place of the old value.
TEST_P(ArborFaultsTest, ReplacingAValueByANumberNeedsNoMemory) {
    PropertyHolder bag;
    bag.setInt(kLongKey, 1);

    const fault_injection::Outcome outcome = everyAllocation(
        GetParam(), [&] { return [&] { bag.setInt(kLongKey, 2); }; }, [](long) {});

    EXPECT_EQ(outcome.points, 0);
    EXPECT_EQ(bag.getInt(kLongKey, -1), 2);
}

TEST_P(ArborFaultsTest, ReplacedValueSurvivesWhenItsCloneCannotBeMade) {
    const arbor::OpaqueProperty successor("abc", 3);
    std::unique_ptr<PropertyHolder> bag;
    bool stored = false;
    failEachAllocation(
        [&] {
            bag = std::make_unique<PropertyHolder>();
            bag->setInt(L"key", 1);
            stored = false;
            return [&] { stored = bag->setProperty(L"key", &successor); };
        },
        [&](long failed) {
            if (failed == 1) {
                EXPECT_FALSE(stored);
            }
            if (!stored) {
                EXPECT_EQ(bag->getInt(L"key", -1), 1);
            }
            bag.reset();
        },
        1);
}

TEST_P(ArborFaultsTest, CopiedEntryIsThereOrTheSetterAnswersFalse) {
    const arbor::OpaqueProperty source("abc", 3);
    std::unique_ptr<PropertyHolder> bag;
    bool stored = false;
    failEachAllocation(
        [&] {
            bag = std::make_unique<PropertyHolder>();
            stored = false;
            return [&] { stored = bag->setProperty(kLongKey, &source); };
        },
        [&](long failed) {
            EXPECT_EQ(bag->hasProperty(kLongKey), stored);
            EXPECT_TRUE(stored || failed != 0);
            bag.reset();
        },
        3);
}

TEST_P(ArborFaultsTest, FirstNumbersOfABagNeedNoMemoryHoweverOftenTheyChange) {
    constexpr arbor::Key number(L"a");
    constexpr arbor::Key pointer(L"b");
    PropertyHolder bag;

    const fault_injection::Outcome outcome = everyAllocation(
        GetParam(),
        [&] {
            return [&] {
                for (int round = 0; round < 20; ++round) {
                    bag.setInt(number, round);
                    bag.setPointer(pointer, &bag);
                    bag.removeProperty(number);
                    bag.removeProperty(pointer);
                }
            };
        },
        [](long) {});

    EXPECT_EQ(outcome.points, 0);
    EXPECT_FALSE(bag.hasProperty(number));
}

TEST_P(ArborFaultsTest, ShortPlainNarrowKeyNeedsNoMemory) {
    const std::string longest(47, 'k');
    const std::string lastPlain(47, '\x7F');
    for (const char* key : {"key", lastPlain.c_str(), longest.c_str()}) {
        std::size_t units = 0;
        const fault_injection::Outcome outcome = everyAllocation(
            GetParam(), [&] { return [&] { units = std::wcslen(arbor::WideKey(key).text()); }; },
            [](long) {});

        EXPECT_EQ(outcome.points, 0) << key;
        EXPECT_EQ(units, std::strlen(key));
    }
}

TEST_P(ArborFaultsTest, AdoptedPropertyThatIsNotStoredStaysTheCallers) {
    std::unique_ptr<PropertyHolder> bag;
    std::unique_ptr<IProperty> property;
    failEachAllocation(
        [&] {
            bag = std::make_unique<PropertyHolder>();
            property.reset(Property::createInt(5));
            return [&] {
                if (bag->adoptProperty(kLongKey, property.get()))
                    static_cast<void>(property.release());
            };
        },
        [&](long failed) {
            EXPECT_EQ(property != nullptr, failed != 0);
            property.reset();
            bag.reset();
        },
        1);
}

TEST_P(ArborFaultsTest, BagOfManyEntriesIsWholeAfterEveryFailure) {
    constexpr int kEntries = 12;  // more than a bag keeps inside itself
    std::unique_ptr<PropertyHolder> bag;
    int stored = 0;
    failEachAllocation(
        [&] {
            bag = std::make_unique<PropertyHolder>();
            stored = 0;
            return [&] {
                for (int number = 0; number < kEntries; ++number) {
                    const char key[] = {static_cast<char>('a' + number), '\0'};
                    if (bag->setString(key, kLongText)) ++stored;
                }
            };
        },
        [&](long) {
            int found = 0;
            for (int number = 0; number < kEntries; ++number) {
                const char key[] = {static_cast<char>('a' + number), '\0'};
                if (bag->hasProperty(key)) ++found;
            }
            EXPECT_EQ(found, stored);
            bag.reset();
        },
        kEntries);
}

TEST_P(ArborFaultsTest, MessageIsFilledAsFarAsMemoryGoes) {
    const arbor::Guid type{1, 2, 3, {}};
    std::shared_ptr<arbor::Message> message;
    failEachAllocation(
        [&] {
            message.reset();
            return [&] {
                message = std::make_shared<arbor::Message>(&type, 1U, 0U);
                message->getProperties()->setString(L"text", kLongText);
                message->getProperties()->setInt(L"status", 5);
            };
        },
        [&](long failed) {
            if (failed == 1) {
                EXPECT_EQ(message, nullptr);
            }
            if (failed == 0) {
                EXPECT_EQ(message->getProperties()->getInt(L"status", 0), 5);
            }
            message.reset();
        },
        2);
}

TEST_P(ArborFaultsTest, DatabaseStoresEntryAndObserverOrNeither) {
    std::unique_ptr<AbstractDatabase> database;
    std::unique_ptr<IProperty> property;
    int observer = 0;
    failEachAllocation(
        [&] {
            database = std::make_unique<AbstractDatabase>();
            property.reset(Property::createInt(5));
            return [&] {
                if (database->set(L"class", L"a long component of a key", property.get(),
                                  &observer))
                    static_cast<void>(property.release());
            };
        },
        [&](long failed) {
            const bool stored = property == nullptr;
            EXPECT_EQ(stored, failed == 0);
            EXPECT_EQ(database->contains(L"class", L"a long component of a key"), stored);
            EXPECT_EQ(database->observers().size(), stored ? 1U : 0U);
            property.reset();
            database.reset();
        },
        3);
}

TEST_P(ArborFaultsTest, ReplacedDatabaseValueNeedsNoMemoryByItsFlatKey) {
    AbstractDatabase database;
    database.set(L"/a", Property::createInt(1));
    std::unique_ptr<IProperty> property(Property::createInt(2));

    const fault_injection::Outcome outcome = everyAllocation(
        GetParam(),
        [&] {
            return [&] {
                if (property && database.set(L"/a", property.get()))
                    static_cast<void>(property.release());
            };
        },
        [](long) {});

    EXPECT_EQ(outcome.points, 0);
    EXPECT_EQ(database.get(L"/a")->toInt(), 2);
}
