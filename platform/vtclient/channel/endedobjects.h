// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/applicationend.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace vt {

/// Keeps clients and servers that were ended by whom they told something: a call of them is under way then,
/// and they last until it has returned, or the application ends. Main thread.
class EndedObjects {
  public:
    static EndedObjects& Instance();
    EndedObjects(const EndedObjects&) = delete;
    EndedObjects& operator=(const EndedObjects&) = delete;

    /// Destroys \a object once IsIdle() says that no call of it is under way: now, or later.
    template <class T>
    void Take(std::unique_ptr<T> object) {
        if (object->IsIdle()) return;
        const T* const kept = object.get();
        Keep({std::shared_ptr<void>(std::move(object)), [kept] { return kept->IsIdle(); }});
    }

  private:
    struct Ended {
        std::shared_ptr<void> object;
        std::function<bool()> isIdle;
    };

    EndedObjects() = default;
    ~EndedObjects() = default;

    void Keep(Ended ended);
    void SweepAfter(std::chrono::milliseconds wait);
    void Sweep();

    std::vector<Ended> m_kept;
    std::optional<ApplicationEnd> m_applicationEnd;  ///< while something is kept
};

}  // namespace vt
