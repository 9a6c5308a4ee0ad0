// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <vector>

/// Programs built apart from the library call its virtual operations by their place in the table, so the
/// order is part of the interface. In the C++ ABI of these compilers a pointer to a virtual member function
/// holds the operation's offset in the table.
namespace slots {

/// Where an operation stands in its table, in words. Function is what its declaration is to be.
template <class Function>
std::size_t Slot(Function operation) {
    std::size_t words[2];
    static_assert(sizeof(operation) == sizeof(words), "not the ABI that this test knows");
    std::memcpy(words, &operation, sizeof(words));
    return words[0] / sizeof(void*);  // the lowest bit only says that it is virtual
}

struct SlotRow {
    const char* operation;
    std::size_t slot;
};

inline void ExpectOneAfterTheOther(std::size_t first, const std::vector<SlotRow>& rows) {
    for (const SlotRow& row : rows)
        EXPECT_EQ(row.slot, first++) << row.operation;
}

template <class Object, class Result, class... Arguments>
using Op = Result (Object::*)(Arguments...);
template <class Object, class Result, class... Arguments>
using ConstOp = Result (Object::*)(Arguments...) const;

}  // namespace slots
