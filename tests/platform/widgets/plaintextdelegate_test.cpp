// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/plaintextdelegate.h>

#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <QtCore/QLocale>
#include <QtGui/QHelpEvent>
#include <QtGui/QStandardItemModel>
#include <QtGui/QTextDocument>
#include <QtWidgets/QApplication>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolTip>

namespace {

/// A view of one cell.
class PlainTextDelegateTest : public testing::Test {
  protected:
    PlainTextDelegateTest() {
        m_view.setModel(&m_model);
        m_view.setItemDelegate(&m_delegate);
        m_view.resize(300, 200);
        m_view.show();
    }
    ~PlainTextDelegateTest() override { QToolTip::hideText(); }

    void SetTip(const QString& text) { m_model.setData(m_model.index(0, 0), text, Qt::ToolTipRole); }
    void Hover() {
        const QPoint place = m_view.visualRect(m_model.index(0, 0)).center();
        QHelpEvent event(QEvent::ToolTip, place, m_view.viewport()->mapToGlobal(place));
        QApplication::sendEvent(m_view.viewport(), &event);
    }
    /// What the tool tip reads.
    static QString Tip() {
        QTextDocument shown;
        if (Qt::mightBeRichText(QToolTip::text()))
            shown.setHtml(QToolTip::text());
        else
            shown.setPlainText(QToolTip::text());
        return shown.toPlainText();
    }

    QStandardItemModel m_model{1, 1};
    PlainTextDelegate m_delegate;
    QTableView m_view;
};

TEST_F(PlainTextDelegateTest, AToolTipReadsAsItIs) {
    for (const char* text : {"plain", "<b>bold</b>", "a &amp; b", "<img src='file:///x.png'>", "1 < 2 > 0"}) {
        SetTip(QString::fromLatin1(text));
        Hover();
        EXPECT_EQ(Tip(), QString::fromLatin1(text));
    }
}

TEST_F(PlainTextDelegateTest, AnEmptyToolTipIsNone) {
    SetTip(QStringLiteral("something"));
    Hover();
    EXPECT_TRUE(QToolTip::isVisible());
    SetTip(QString());
    Hover();
    EXPECT_TRUE(WaitUntil([] { return !QToolTip::isVisible(); }));
}

TEST_F(PlainTextDelegateTest, ALongToolTipIsShortened) {
    SetTip(QString(50000, QLatin1Char('x')));
    Hover();
    EXPECT_EQ(Tip(), QString(2000, QLatin1Char('x')) + QChar(0x2026));
}

TEST_F(PlainTextDelegateTest, ACellIsOneLineOfBoundedLength) {
    const QLocale locale = QLocale::c();
    EXPECT_EQ(m_delegate.displayText(QStringLiteral("a\nb"), locale), QStringLiteral("a b"));
    EXPECT_EQ(m_delegate.displayText(QStringLiteral("<b>a</b>"), locale), QStringLiteral("<b>a</b>"));
    EXPECT_EQ(m_delegate.displayText(QString(50000, QLatin1Char('x')), locale).size(), 501);
    EXPECT_EQ(m_delegate.displayText(12, locale), QStringLiteral("12"));
}

TEST_F(PlainTextDelegateTest, OtherHelpIsLeftToItsBase) {
    const QModelIndex cell = m_model.index(0, 0);
    const auto asksForHelp = [&] {
        QHelpEvent event(QEvent::QueryWhatsThis, QPoint(), QPoint());
        return m_delegate.helpEvent(&event, &m_view, QStyleOptionViewItem(), cell);
    };
    EXPECT_FALSE(asksForHelp());
    m_model.setData(cell, QStringLiteral("what"), Qt::WhatsThisRole);
    EXPECT_TRUE(asksForHelp());
    EXPECT_FALSE(m_delegate.helpEvent(nullptr, &m_view, QStyleOptionViewItem(), cell));
}

}  // namespace
