// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/wire/pagedtable.h>

#include <gtest/gtest.h>

#include <limits>
#include <set>

namespace {

struct Entry {
    bool IsUsed() const { return number != 0; }
    quint32 number = 0;
};

class PagedTableTest : public testing::Test {
  protected:
    void Add(quint32 number) {
        m_table.Provide(number).number = number;
        m_table.Retain(number);
    }
    void Remove(quint32 number) {
        m_table.Find(number)->number = 0;
        m_table.Release(number);
    }
    bool Has(quint32 number) {
        const Entry* const entry = m_table.Find(number);
        return entry != nullptr && entry->number == number;
    }
    std::set<quint32> All() {
        std::set<quint32> all;
        m_table.ForEach([&all](const Entry& entry) { all.insert(entry.number); });
        return all;
    }

    vt::PagedTable<Entry> m_table;
};

TEST_F(PagedTableTest, FindsWhatIsThereAndNothingElse) {
    const std::set<quint32> numbers = {1, 63, 64, 65, 100000, std::numeric_limits<quint32>::max()};
    for (const quint32 number : numbers)
        Add(number);
    for (const quint32 number : numbers)
        EXPECT_TRUE(Has(number)) << number;
    EXPECT_FALSE(Has(2));
    EXPECT_EQ(m_table.Find(1000), nullptr);
    EXPECT_EQ(All(), numbers);
}

TEST_F(PagedTableTest, EntriesStayWhereTheyAre) {
    Add(1);
    const Entry* const first = m_table.Find(1);
    for (quint32 number = 2; number < 100000; number += 7)
        Add(number);
    EXPECT_EQ(m_table.Find(1), first);
}

TEST_F(PagedTableTest, APageGoesWithItsLastEntryUnlessItIsBeingFilled) {
    Add(10);
    Add(11);
    Add(200);
    Remove(10);
    EXPECT_NE(m_table.Find(10), nullptr);
    Remove(11);
    EXPECT_EQ(m_table.Find(10), nullptr);
    Remove(200);
    EXPECT_NE(m_table.Find(200), nullptr) << "more is to come here";
    Add(10);
    EXPECT_TRUE(Has(10));
}

TEST_F(PagedTableTest, IsEmptyOnceCleared) {
    Add(5);
    m_table.Clear();
    EXPECT_EQ(m_table.Find(5), nullptr);
    EXPECT_TRUE(All().empty());
    Add(5);
    EXPECT_TRUE(Has(5));
}

}  // namespace
