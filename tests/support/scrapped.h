// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

/// Made with new and destroyed, such an object leaves nothing sensible in its memory, and nobody else gets
/// that memory: who goes on using the object fails, without a sanitizer too.
template <class Object>
class Scrapped : public Object {
  public:
    using Object::Object;

    static void* operator new(std::size_t size) {
        auto& yard = Yard();
        yard.push_back(std::make_unique<Block[]>(size / sizeof(Block) + 1));
        return yard.back().get();
    }
    static void operator delete(void* memory, std::size_t size) { std::memset(memory, 0xA5, size); }

  private:
    using Block = std::max_align_t;

    static std::vector<std::unique_ptr<Block[]>>& Yard() {
        static std::vector<std::unique_ptr<Block[]>> yard;
        return yard;
    }
};
