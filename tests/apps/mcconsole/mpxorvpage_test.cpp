// SPDX-License-Identifier: Apache-2.0
// The answers to requests on the page of the console's own MpxORV.
#include <apps/mcconsole/mpxorvpage.h>

#include <tests/apps/mcconsole/tunebarfixture.h>

#include <gmock/gmock.h>

#include <QtCore/QRegularExpression>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTextEdit>

using testing::EndsWith;
using testing::HasSubstr;

namespace {

class MpxOrvPageTest : public TuneBarTest {
  protected:
    MpxOrvPageTest() {
        page->Bind(QStringLiteral("/Mine"));
        tabs.addTab(page, QStringLiteral("Mine"));
        tabs.addTab(other, QStringLiteral("Other"));
        tabs.resize(600, 500);
        tabs.show();
    }

    QTextEdit* Text() const { return page->findChild<QTextEdit*>(); }
    std::string Answers() const { return Text()->toPlainText().trimmed().toStdString(); }
    void Say(const QString& text) {
        answer->SetValue(text);
        QCoreApplication::processEvents();
    }
    bool IsNewestSeen() const {
        const QScrollBar& scroller = *Text()->verticalScrollBar();
        return scroller.maximum() > 0 && scroller.value() == scroller.maximum();
    }

    QTabWidget tabs;
    MpxOrvPage* const page = new MpxOrvPage(tuning, book);
    QWidget* const other = new QWidget;
};

TEST_F(MpxOrvPageTest, ShowsNamesInAnswersAsTheyAre) {
    Say(QStringLiteral("refused: blanked by Tower & <b>North</b>"));
    EXPECT_THAT(Answers(), EndsWith(" refused: blanked by Tower & <b>North</b>"));
}

TEST_F(MpxOrvPageTest, SaysWhenTheAnswerCame) {
    Say(QStringLiteral("done: tuned"));
    static const QRegularExpression line(QStringLiteral("\\d\\d:\\d\\d:\\d\\d done: tuned$"));
    EXPECT_TRUE(line.match(QString::fromStdString(Answers())).hasMatch()) << Answers();
}

TEST_F(MpxOrvPageTest, ShowsTheNewestAnswerAlsoWhenItCameBehindAnotherPage) {
    const QString longLine = QString(300, QLatin1Char('x'));
    for (int i = 0; i < 20; ++i)
        Say(QStringLiteral("refused: %1 %2").arg(longLine).arg(i));
    EXPECT_TRUE(IsNewestSeen());
    tabs.setCurrentWidget(other);
    for (int i = 0; i < 20; ++i)
        Say(QStringLiteral("done: %1 %2").arg(longLine).arg(i));
    tabs.setCurrentWidget(page);
    QCoreApplication::processEvents();
    EXPECT_TRUE(IsNewestSeen());
    Text()->verticalScrollBar()->setValue(0);
    Say(QStringLiteral("ended: needs another"));
    EXPECT_TRUE(IsNewestSeen());
    EXPECT_THAT(Answers(), HasSubstr("ended: needs another"));
}

}  // namespace
