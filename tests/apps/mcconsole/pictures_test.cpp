// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/pictures.h>

#include <tests/support/waituntil.h>

#include <devicecontrol/multichannelserver/common/mcslogdisplay.h>

#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/widgets/vclabel.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QVBoxLayout>

#include <gtest/gtest.h>

namespace {

/// A window with a state and a log of it, which change faster than windows are drawn.
class Pictures : public testing::Test {
  protected:
    Pictures() {
        auto* const page = new QWidget;
        page->setObjectName(QStringLiteral("Page"));
        auto* const layout = new QVBoxLayout(page);
        m_label = new VCLabel(page);
        m_log = new MCSLogDisplay(page);
        layout->addWidget(m_label);
        layout->addWidget(m_log);
        m_tabs.addTab(page, QStringLiteral("Page"));
        m_state = Add("State");
        m_message = Add("LogMessage");
        m_label->SetText_ValuePath(m_state->GetPathName(), false);
        m_log->SetLogMessage_ValuePath(m_message->GetPathName());
        m_tabs.resize(300, 200);
    }

    values::Value<QString>* Add(const char* name) {
        auto value = std::make_unique<values::Value<QString>>();
        value->SetName(QString::fromLatin1(name));
        value->SetDelivery(values::EDelivery::EveryChange);
        m_tree.AddValue(QStringLiteral("/Server"), value.get());
        return value.release();
    }
    void Tell(const char* what) {
        m_state->SetValue(QString::fromLatin1(what));
        m_message->SetValue(QString::fromLatin1(what));
    }
    /// What the pages look like, without waiting for anything.
    QImage Take() {
        EXPECT_EQ(pictures::SavePages(m_tabs, m_tabs, m_directory.path(), QStringLiteral("x-")), QString());
        return QImage(QDir(m_directory.path()).filePath(QStringLiteral("x-Page.png")));
    }

    values::Tree m_tree;
    QTemporaryDir m_directory;
    QTabWidget m_tabs;
    VCLabel* m_label;
    MCSLogDisplay* m_log;
    values::Value<QString>* m_state;
    values::Value<QString>* m_message;
};

TEST_F(Pictures, ShowWhatHoldsWhenTheyAreTaken) {
    m_tabs.show();
    QCoreApplication::processEvents();
    for (const char* const what : {"Idle", "Booting", "Sweeping"})
        Tell(what);
    const QImage taken = Take();
    EXPECT_EQ(m_label->text(), QStringLiteral("Sweeping"));
    ASSERT_TRUE(WaitUntil([] { return !RefreshScheduler::Instance().IsPausing(); }));
    EXPECT_EQ(taken, m_tabs.grab().toImage()) << "nothing is left to be drawn";
}

/// Where tables are fitted to their room after all else is laid out.
TEST_F(Pictures, ShowWhatIsFittedAMomentLater) {
    auto* const bar = new QWidget(&m_tabs);
    bar->setGeometry(100, 100, 50, 50);
    bar->setAutoFillBackground(true);
    bar->setPalette(QPalette(Qt::red));
    bar->show();
    const QImage before = Take();
    QMetaObject::invokeMethod(bar, &QWidget::hide, Qt::QueuedConnection);
    EXPECT_NE(Take().pixel(120, 120), before.pixel(120, 120));
}

}  // namespace
