// SPDX-License-Identifier: Apache-2.0
#include <platform/values/observable.h>

#include <platform/values/mainthread.h>

#include <algorithm>

IObserver::~IObserver() = default;

Observable::Walk::~Walk() {
    if (subject == nullptr) return;
    subject->m_walks = outer;
    if (!toFront) return;
    for (IObserver* observer : *toFront)
        subject->MoveToFront(observer);
}

Observable::~Observable() {
    DisturbWalks();
    for (Walk* walk = m_walks; walk != nullptr; walk = walk->outer)
        walk->subject = nullptr;
    if (m_capacity != 0) delete[] m_heap;
}

void Observable::DisturbWalks() {
    for (Walk* walk = m_walks; walk != nullptr; walk = walk->outer)
        walk->isDisturbed = true;
}

std::uint32_t Observable::IndexOf(const IObserver* observer) const {
    IObserver* const* const data = Data();
    return static_cast<std::uint32_t>(std::find(data, data + m_count, observer) - data);
}

void Observable::Grow() {
    const std::uint32_t capacity = m_capacity == 0 ? 4 : 2 * m_capacity;
    auto** const grown = new IObserver*[capacity];
    std::copy_n(Data(), m_count, grown);
    if (m_capacity != 0) delete[] m_heap;
    m_heap = grown;
    m_capacity = capacity;
    DisturbWalks();
}

void Observable::AddObserver(IObserver* observer) {
    MCS_ASSERT_MAIN_THREAD();
    if (observer == nullptr || IndexOf(observer) != m_count) return;
    if (m_count == std::max(m_capacity, 1U)) Grow();
    Data()[m_count++] = observer;
}

void Observable::DeleteObserver(IObserver* observer) {
    MCS_ASSERT_MAIN_THREAD();
    const std::uint32_t index = IndexOf(observer);
    if (index == m_count) return;
    IObserver** const data = Data();
    std::copy(data + index + 1, data + m_count, data + index);
    --m_count;
    DisturbWalks();
    for (Walk* walk = m_walks; walk != nullptr; walk = walk->outer) {
        if (index < walk->next) --walk->next;
        if (index < walk->end) --walk->end;
    }
}

void Observable::DeleteObservers() {
    MCS_ASSERT_MAIN_THREAD();
    m_count = 0;
    DisturbWalks();
    for (Walk* walk = m_walks; walk != nullptr; walk = walk->outer)
        walk->next = walk->end = 0;
}

void Observable::MakeFirstObserver(IObserver* observer) {
    MCS_ASSERT_MAIN_THREAD();
    if (m_walks == nullptr) {
        MoveToFront(observer);
        return;
    }
    // Moving now would make a walk under way skip the observer or tell it twice.
    Walk* outermost = m_walks;
    while (outermost->outer != nullptr)
        outermost = outermost->outer;
    if (!outermost->toFront) outermost->toFront = std::make_unique<std::vector<IObserver*>>();
    outermost->toFront->push_back(observer);
}

void Observable::MoveToFront(IObserver* observer) {
    const std::uint32_t index = IndexOf(observer);
    if (index == m_count) return;
    IObserver** const data = Data();
    std::rotate(data, data + index, data + index + 1);
}

void Observable::NotifyObservers(TChangeCode code, IObserver* originator) {
    MCS_ASSERT_MAIN_THREAD();
    Notify(code, originator);
}

void Observable::NotifyMany(TChangeCode code, IObserver* originator) {
    IObserver* const* data = Data();
    // The usual two of a mirrored value: the mirror, which sets it, and whoever shows it. One is left to be
    // told, for which there need not be a walk either.
    if (m_count == 2 && originator != nullptr) {
        if (data[0] == originator) return data[1]->Update(this, code);
        if (data[1] == originator) return data[0]->Update(this, code);
    }
    Walk* const outer = m_walks;
    Walk walk(*this);
    walk.end = m_count;
    for (std::uint32_t next = 0, end = m_count; next < end;) {
        IObserver* const observer = data[next++];
        if (observer == originator) continue;
        walk.next = next;
        observer->Update(this, code);
        if (!walk.isDisturbed) continue;
        if (walk.subject == nullptr) return;
        walk.isDisturbed = false;
        data = Data();
        next = walk.next;
        end = walk.end;
    }
    if (walk.toFront) return;
    // What ~Walk() does, without reading back what was written just now: the next notification waits for it.
    m_walks = outer;
    walk.subject = nullptr;
}
