// Names of keys: the list, characters, texts from a file, combinations.
#include "dialogs/key_names.h"

#include "core/virtual_keys.h"
#include "support/error_of.h"

#include <gtest/gtest.h>

#include <set>

using namespace Qt::Literals::StringLiterals;

TEST(KeyNames, EveryKeyOfTheListHasItsName) {
    std::set<int> codes;
    for (const VirtualKeyName& row : kVirtualKeyNames) {
        EXPECT_EQ(GetVirtKeyName(row.code), QString::fromLatin1(row.name));
        EXPECT_TRUE(codes.insert(row.code).second) << row.code << " is named twice";
    }
    EXPECT_EQ(KeyName(112), u"F1"_s);
    EXPECT_EQ(KeyName(127), u"F16"_s);
    EXPECT_EQ(KeyName(105), u"9 (KP)"_s);
}

TEST(KeyNames, ThePageUpKeyAndCode0HaveTheNamesOfOthers) {
    EXPECT_EQ(KeyName(33), u"[AP]"_s);          // D-142
    EXPECT_EQ(KeyName(0), u"ENTER (KEYPAD)"_s); // D-143
    EXPECT_EQ(KeyName(13), u"ENTER"_s);
}

TEST(KeyNames, ACodeOutsideTheListIsNamedAfterItsCharacter) {
    EXPECT_EQ(KeyName(65), u"A"_s);
    EXPECT_EQ(KeyName(48), u"0"_s);
    EXPECT_EQ(KeyName(233), u"é"_s);
    EXPECT_EQ(KeyName(8364), u"€"_s);
    EXPECT_EQ(KeyName(-5), QString());
}

TEST(KeyNames, ATextStandsForTheCodeOfItsFirstCharacter) {
    EXPECT_EQ(GetVirtKeyName(u"Bar"_s), u"B"_s);
    EXPECT_EQ(GetVirtKeyName(u"\t"_s), u"TAB"_s);
    EXPECT_EQ(ErrorOf([] { GetVirtKeyName(QString()); }), 5);
}

TEST(KeyNames, AStoredKeyIsANumberOrNamedAfterItsFirstCharacter) {
    EXPECT_EQ(NameOfStoredKey(QString()), QString());
    EXPECT_EQ(NameOfStoredKey(u" 38 "_s), u"UP ARROW"_s);
    EXPECT_EQ(NameOfStoredKey(u"Escape"_s), u"E"_s);
    EXPECT_EQ(ErrorOf([] { NameOfStoredKey(u"40000"_s); }), 6);
}

TEST(KeyNames, ACombinationJoinsTheNamesOfItsKeys) {
    EXPECT_EQ(NameOfCombination(u"33|49"_s), u"[AP] + 1"_s);
    EXPECT_EQ(NameOfCombination(u"|65||66|"_s), u"A + B"_s);
    EXPECT_EQ(NameOfCombination(QString()), QString());
    EXPECT_EQ(ErrorOf([] { NameOfCombination(u"65|99999"_s); }), 6);
}
