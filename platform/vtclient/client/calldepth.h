// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace vt {

/// Counts the calls of an object that are under way, which whoever is told of something in their middle may
/// lead back to: meanwhile the object, and what it is made of, must not be destroyed.
class CallDepth {
  public:
    /// A call, while it lives.
    class Call {
      public:
        explicit Call(CallDepth& depth) : m_depth(depth) { ++m_depth.m_calls; }
        ~Call() { --m_depth.m_calls; }
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;

      private:
        CallDepth& m_depth;
    };

    bool IsIdle() const { return m_calls == 0; }
    /// Only the call that asks is under way.
    bool IsOutermost() const { return m_calls == 1; }

  private:
    int m_calls = 0;
};

}  // namespace vt
