// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QKeySequence>
#include <QtWidgets/QScrollArea>

class QTabWidget;

/// A page of a window that stays usable where the screen is smaller than the page: on a laptop, or magnified.
/// Asks for as much room as shows all of it. GUI thread.
class ScrolledPage : public QScrollArea {
    Q_OBJECT

  public:
    /// Owns \a page.
    explicit ScrolledPage(QWidget* page);

    /// Adds \a page to \a tabs, with the key that leads there in the tool tip. \a name becomes the object
    /// name of what is added; \a brief is the title where that is too long for a tab.
    static void AddTo(QTabWidget& tabs, QWidget* page, const QString& name, const QString& title,
                      const QString& brief = QString());

    /// What brings the page with that index to the front; empty if no key does.
    static QKeySequence KeyOfPage(int index);

    QSize sizeHint() const override;
};
