// SPDX-License-Identifier: Apache-2.0
#include <platform/app/applicationend.h>

#include <QtCore/QCoreApplication>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

/// Those that were not called yet.
std::vector<ApplicationEnd*>& Waiting() {
    static auto& waiting =
        *new std::vector<ApplicationEnd*>;  // never destroyed: statics that go later leave it
    return waiting;
}

}  // namespace

ApplicationEnd::ApplicationEnd(std::function<void()> end) : m_end(std::move(end)) {
    if (Waiting().empty()) qAddPostRoutine(CallAll);
    Waiting().push_back(this);
}

ApplicationEnd::~ApplicationEnd() {
    auto& waiting = Waiting();
    const auto found = std::find(waiting.begin(), waiting.end(), this);
    if (found == waiting.end()) return;
    waiting.erase(found);
    // The application keeps the address of a function, whose library may be unloaded before the end.
    if (waiting.empty()) qRemovePostRoutine(CallAll);
}

void ApplicationEnd::CallAll() {
    while (!Waiting().empty()) {
        ApplicationEnd* const last = Waiting().back();
        Waiting().pop_back();
        const std::function<void()> end = last->m_end;  // which may destroy the last itself
        end();
    }
}
