// SPDX-License-Identifier: Apache-2.0
#include <platform/values/valuebase.h>

#include <platform/app/trace.h>
#include <platform/values/mainthread.h>
#include <platform/values/node.h>

namespace values {

ValueBase::ValueBase(const ValueBase& other)
    : TreeItem(other), Observable(other), m_delivery(other.m_delivery) {}

ValueBase::~ValueBase() {
    MCS_ASSERT_MAIN_THREAD();
    Q_ASSERT_X(GetState() == GoingAway, Q_FUNC_INFO, "each class of value says goodbye in its destructor");
}

void ValueBase::NotifyGoingAway() {
    NotifyObservers(changecode::StateChanged);
}

void ValueBase::SetName(const QString& name, IObserver* originator) {
    if (name == GetName()) return;
    if (!Rename(name)) return TraceRefusal("name empty, with a slash, or taken");
    const ObservableGuard guard(*this);
    NotifyObservers(changecode::DescriptionChanged, originator);
    if (guard.IsAlive() && GetParent() != nullptr) GetParent()->NotifyObservers(changecode::ChildRenamed);
}

void ValueBase::SetState(TValueState state, IObserver* originator) {
    Q_ASSERT_X(state != GoingAway, Q_FUNC_INFO, "an item goes away by being destroyed");
    if (state == GetState() || GetState() == GoingAway) return;
    StoreState(state);
    NotifyObservers(changecode::StateChanged, originator);
}

void ValueBase::SetDelivery(EDelivery delivery) {
    if (delivery == m_delivery) return;
    m_delivery = delivery;
    NotifyObservers(changecode::DescriptionChanged);
}

void ValueBase::SetWritable(bool isWritable) {
    if (isWritable == m_isWritable) return;
    m_isWritable = isWritable;
    NotifyObservers(changecode::DescriptionChanged);
}

void ValueBase::TraceRefusal(const char* what) const {
    MCS_TRACE(QStringLiteral("The value '%1' refuses: %2").arg(GetPathName(), QLatin1String(what)));
}

}  // namespace values
