// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

/// The hand-written peer of values and observers: a vector of pointers and a virtual call each. It can
/// neither stand a listener that leaves while it is told, nor leave out an originator.
namespace handwritten {

class Listener {
  public:
    virtual ~Listener() = default;
    virtual void OnChanged(void* source, int code) = 0;
};

class Value {
  public:
    std::vector<Listener*> listeners;

    void Set(int content) {
        if (content == m_content) return;
        m_content = content;
        Tell(3);
    }

  private:
    void Tell(int code);

    int m_content = 0;
};

}  // namespace handwritten
