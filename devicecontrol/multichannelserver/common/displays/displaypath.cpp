// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/displays/displaypath.h>

#include <platform/values/valuebase.h>

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

#include <utility>
#include <vector>

namespace {

/// Nodes are no values, and so are followed as what cannot be shown: it counts that they come and go.
bool IsAnyContent(const values::ValueBase&) {
    return true;
}

/// By hand: they are no classes of moc's, which would find them by their type.
std::vector<DisplayPath*> PathsOf(const QWidget& display) {
    std::vector<DisplayPath*> paths;
    for (QObject* const child : display.children())
        if (auto* const path = dynamic_cast<DisplayPath*>(child)) paths.push_back(path);
    return paths;
}

}  // namespace

DisplayPath::DisplayPath(QWidget& display, const QString& path, Show show)
    : QObject(&display), m_show(std::move(show)), m_binding(*this, IsAnyContent) {
    m_binding.SetPath(path);
}

QString DisplayPath::Of(const QWidget& display) {
    return AllOf(display).value(0);
}

QStringList DisplayPath::AllOf(const QWidget& display) {
    QStringList paths;
    for (const DisplayPath* const path : PathsOf(display))
        paths << path->m_binding.GetPath();
    return paths;
}

void DisplayPath::Set(QWidget& display, const QString& path, const Show& show) {
    if (path.isEmpty()) {
        SetAll(display, {}, show);
        return show(path);
    }
    SetAll(display, {path}, show);
}

void DisplayPath::SetAll(QWidget& display, const QStringList& paths, const Show& show) {
    for (DisplayPath* const path : PathsOf(display))
        delete path;
    for (const QString& path : paths)
        if (!path.isEmpty()) new DisplayPath(display, path, show);
    const QPointer<QWidget> self(&display);
    for (const QString& path : paths) {
        if (!path.isEmpty()) show(path);
        if (self.isNull()) return;
    }
}

// Not at once: whoever tells is in the middle of adding or removing, and the display would add to the tree.
void DisplayPath::OnBindingChanged(PathBinding&, TChangeCode code) {
    if (code != PathBinding::Rebound || std::exchange(m_isDue, true)) return;
    QMetaObject::invokeMethod(this, &DisplayPath::ShowAgain, Qt::QueuedConnection);
}

void DisplayPath::ShowAgain() {
    m_isDue = false;
    const Show show = m_show;  // which may set another path, and so end this
    show(m_binding.GetPath());
}
