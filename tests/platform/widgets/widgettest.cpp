// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/widgets/widgettest.h>

#include <tests/support/waituntil.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QStringList>
#include <QtGui/QHelpEvent>
#include <QtGui/QTextDocument>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

#include <vector>

namespace widgettest {

values::ValueSelection* AddSelection(const char* path, int count, int current) {
    static const char* const names[] = {"Zero", "One", "Two", "Three", "Four", "Five"};
    auto* const selection = Add<values::ValueSelection>(path);
    for (int i = 0; i < count; ++i)
        selection->AddItem(Text(names[i]), i, i * 10L);
    selection->SelectIndex(current);
    return selection;
}

void Settle() {
    if (!WaitUntil([] { return !RefreshScheduler::Instance().IsPausing(); })) qFatal("There is no end to it");
}

void BeginPause() {
    class : public RefreshScheduler::Client {
        void Refresh() override {}
    } client;
    RefreshScheduler::Instance().Request(client);
    if (!RefreshScheduler::Instance().IsPausing()) qFatal("There is no pause");
}

void Activate(QWidget& window, QWidget& focused) {
    window.show();
    window.activateWindow();
    focused.setFocus();
    if (!WaitUntil([&] { return window.isActiveWindow() && focused.hasFocus(); }))
        qFatal("The window does not become active");
}

QWidget* VeilOf(const QWidget& widget) {
    auto* const veil = widget.findChild<QWidget*>(QStringLiteral("StaleVeil"), Qt::FindDirectChildrenOnly);
    return veil != nullptr && veil->isVisibleTo(&widget) && veil->size() == widget.size() ? veil : nullptr;
}

bool IsLocked(const QWidget& widget) {
    auto* const lock = widget.findChild<QWidget*>(QStringLiteral("LockMark"), Qt::FindDirectChildrenOnly);
    return lock != nullptr && lock->isVisibleTo(&widget) && widget.rect().contains(lock->geometry());
}

QString ShownTipHtml() {
    return QToolTip::isVisible() ? QToolTip::text() : QString();
}

QString ShownTip() {
    QTextDocument document;
    document.setHtml(ShownTipHtml());
    return document.toPlainText().remove(QChar(0x200B));
}

QString TipOf(QWidget& widget) {
    HideTip();
    const QPoint center = widget.rect().center();
    QHelpEvent event(QEvent::ToolTip, center, widget.mapToGlobal(center));
    QApplication::sendEvent(&widget, &event);
    return ShownTip();
}

void HideTip() {
    for (QWidget* const window : QApplication::topLevelWidgets())
        if (window->inherits("QTipLabel")) window->hide();
}

class SignalCounter::Spies {
  public:
    std::vector<std::pair<QString, std::unique_ptr<QSignalSpy>>> all;
};

SignalCounter::SignalCounter(QObject& object) : m_spies(std::make_unique<Spies>()) {
    const QMetaObject& meta = *object.metaObject();
    for (int i = QWidget::staticMetaObject.methodCount(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() != QMetaMethod::Signal) continue;
        // Where the cursor stands is not what the user enters.
        if (method.name() == "cursorPositionChanged" || method.name() == "selectionChanged") continue;
        m_spies->all.emplace_back(QString::fromLatin1(method.methodSignature()),
                                  std::make_unique<QSignalSpy>(&object, method));
    }
}

SignalCounter::~SignalCounter() = default;

int SignalCounter::Count() const {
    int count = 0;
    for (const auto& spy : m_spies->all)
        count += spy.second->count();
    return count;
}

QString SignalCounter::Names() const {
    QStringList names;
    for (const auto& spy : m_spies->all)
        if (spy.second->count() > 0) names << spy.first;
    return names.join(QLatin1Char(' '));
}

bool PaintCounter::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint) ++m_count;
    return QObject::eventFilter(watched, event);
}

WidgetTest::WidgetTest() {
    m_window.resize(500, 300);
}

WidgetTest::~WidgetTest() {
    HideTip();
}

void WidgetTest::Delete(const char* path) {
    values::TreeItem* const item = m_tree->FindItem(Text(path));
    if (item == nullptr) qFatal("Nothing is at '%s'", path);
    m_tree->Delete(item);
}

}  // namespace widgettest
