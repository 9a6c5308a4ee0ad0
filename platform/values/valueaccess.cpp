// SPDX-License-Identifier: Apache-2.0
#include <platform/values/valueaccess.h>

#include <platform/app/errorhandler.h>
#include <platform/values/visit.h>

namespace values {

namespace {

/// Traces of this message name the place that the users of the value framework know it by. (fixed: leak-text)
constexpr const wchar_t* TraceSource = L"valueframework/valueclasses/valueobservermacros";
constexpr int RefusedLine = 299;

void TraceRefused(const QString& path) {
    if (!ErrorHandler::Instance().IsTraced(ErrorHandler::TraceWarnings)) return;
    _Q_Trace(QStringLiteral("!!!!!!!MEMORY LEAK! The value with the path '%1' could not be created!!! "
                            "A value of this name already exists for a different type!!!!!!!!")
                 .arg(path),
             TraceSource, RefusedLine);
}

}  // namespace

bool detail::AddAtPath(const QString& path, ValueBase* value) {
    Tree* const tree = Tree::Instance();
    Q_ASSERT_X(tree != nullptr, Q_FUNC_INFO, "the tree exists before anything that uses it");
    const int slash = path.lastIndexOf(QLatin1Char('/'));
    const ObservableGuard guard(*value);
    value->SetName(path.mid(slash + 1), nullptr);
    if (tree == nullptr || !tree->AddValue(path.left(slash + 1), value)) TraceRefused(path);
    return guard.IsAlive();
}

void NotifyInitially(TreeItem* item, IObserver* observer) {
    Observable* const observable = item != nullptr && observer != nullptr ? item->GetObservable() : nullptr;
    if (observable == nullptr) return;
    const bool isSelection = Is<ValueSelection>(*item);
    // Who observes the item detaches before it dies, or when it turns to another item.
    const bool isAttached = observable->HasObserver(observer);
    const ObservableGuard guard(*observable);
    const auto tell = [&](TChangeCode code) {
        const bool isStill = guard.IsAlive() && (!isAttached || observable->HasObserver(observer));
        if (isStill) observer->Update(observable, code);
    };
    tell(changecode::StateChanged);
    tell(changecode::DescriptionChanged);
    if (isSelection) tell(changecode::ItemsChanged);
    tell(changecode::ContentChanged);
}

}  // namespace values
