// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/values/valueselection.h>
#include <platform/widgets/refreshscheduler.h>
#include <platform/widgets/widgetbinding.h>

#include <tests/support/printing.h>

#include <QtCore/QString>
#include <QtTest/QTest>
#include <QtWidgets/QWidget>

#include <gtest/gtest.h>

#include <memory>
#include <utility>

/// Looks at value-bound widgets and handles them as a person does.
namespace widgettest {

inline QString Text(const char* text) {
    return QString::fromUtf8(text);
}

/// Adds a value of type \a V, made from \a content, at \a path.
template <class V, class... Content>
V* Add(const char* path, Content&&... content) {
    const QString full = Text(path);
    const int slash = full.lastIndexOf(QLatin1Char('/'));
    auto value = std::make_unique<V>(std::forward<Content>(content)...);
    value->SetName(full.mid(slash + 1));
    if (!values::Tree::Instance()->AddValue(full.left(slash), value.get())) qFatal("'%s' is taken", path);
    return value.release();
}

/// A selection of "Zero", "One", "Two", ... with the keys 0, 10, 20, ...
values::ValueSelection* AddSelection(const char* path, int count, int current);

/// Lets all that waits to be shown be shown.
inline void Flush() {
    RefreshScheduler::Instance().Flush();
}

/// Lets the widgets come to rest: what is shown next is shown at once.
void Settle();

/// Contents that change from now on are not shown at once. Not during a test that serves the event loop.
void BeginPause();

/// Shows \a window, and gives it and \a focused the focus.
void Activate(QWidget& window, QWidget& focused);

/// What lies over a widget whose content is not live; null if nothing.
QWidget* VeilOf(const QWidget& widget);

/// Whether a lock marks \a widget as one that may not be edited.
bool IsLocked(const QWidget& widget);

/// The text of the tip that is shown now, without markup; empty if none.
QString ShownTip();
/// The markup of the tip that is shown now.
QString ShownTipHtml();
/// Rests with the pointer on \a widget, and reads the tip.
QString TipOf(QWidget& widget);
void HideTip();

/// Counts all signals of the widget's own classes, down from QWidget, but for those about its looks.
class SignalCounter {
  public:
    explicit SignalCounter(QObject& object);
    ~SignalCounter();
    SignalCounter(const SignalCounter&) = delete;
    SignalCounter& operator=(const SignalCounter&) = delete;

    int Count() const;
    /// The signals that came, joined by blanks.
    QString Names() const;

  private:
    class Spies;
    std::unique_ptr<Spies> m_spies;
};

/// Counts how often a widget is painted.
class PaintCounter : public QObject {
  public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
    int Count() const { return m_count; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    int m_count = 0;
};

/// A window on which widgets stand, and the tree that they show.
class WidgetTest : public testing::Test {
  protected:
    WidgetTest();
    ~WidgetTest() override;

    values::Tree& GetTree() { return *m_tree; }
    void DestroyTree() { m_tree.reset(); }
    void Delete(const char* path);

    std::unique_ptr<values::Tree> m_tree = std::make_unique<values::Tree>();
    QWidget m_window;
};

}  // namespace widgettest
