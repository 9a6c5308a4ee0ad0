// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/suppression/modulestatusmodel.h>
#include <apps/pages/suppression/suppressionstate.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QDateTime>

#include <chrono>

namespace {

using namespace std::chrono_literals;

/// Two modules of a server whose clock goes otherwise than the one here.
class AgesOfAnswers : public testing::Test {
  protected:
    AgesOfAnswers() {
        m_state.isThere = m_state.isLive = true;
        for (const int number : {0, 1}) {
            ModuleStatusView module;
            module.number = number;
            m_state.modules.push_back(module);
        }
    }
    /// \a module answered \a ago, by the clock here; the server's is \a behind it.
    void Answer(int module, std::chrono::milliseconds ago, std::chrono::milliseconds behind) {
        m_state.modules[static_cast<std::size_t>(module)].lastAnswer =
            QDateTime::currentDateTimeUtc().addMSecs(-(ago + behind).count()).toString(Qt::ISODateWithMs);
        m_model.LearnClock(m_state);
        m_model.Show(m_state);
    }
    QString Age(int module) const {
        return m_model.index(module, ModuleStatusModel::LastAnswer).data().toString();
    }
    static bool IsNow(const QString& age) { return age.endsWith(QStringLiteral(" s ago")); }

    SuppressionState m_state;
    ModuleStatusModel m_model;
};

TEST_F(AgesOfAnswers, CountFromWhenTheyCameWhateverTheServersClock) {
    Answer(0, 1s, 3h);
    Answer(0, 0s, 3h);
    EXPECT_TRUE(IsNow(Age(0))) << Age(0).toStdString();
}

TEST_F(AgesOfAnswers, OfOneThatAnswersAreShortThoughTheServersClockIsSetBack) {
    Answer(0, 2s, 0s);
    Answer(0, 1s, 0s);
    Answer(0, 0s, 410 * 24h);
    EXPECT_TRUE(IsNow(Age(0))) << Age(0).toStdString();
}

TEST_F(AgesOfAnswers, OfOneThatIsLostStayAsTheyWereThen) {
    Answer(0, 2h, 0s);
    Answer(1, 2h, 0s);
    Answer(0, 1s, 0s);
    Answer(1, 61min, 0s);  // and nothing since
    EXPECT_EQ(Age(1), QStringLiteral("1 h ago"));
    Answer(0, 0s, 5h);
    EXPECT_EQ(Age(1), QStringLiteral("1 h ago"));
    EXPECT_TRUE(IsNow(Age(0))) << Age(0).toStdString();
}

TEST_F(AgesOfAnswers, OfAnAnswerThatCameWhileNobodyListenedAreThoseOfTheServer) {
    Answer(0, 2h, 5h);
    Answer(0, 0s, 5h);
    m_state.isLive = false;
    Answer(1, 3h, 5h);
    EXPECT_EQ(Age(1), QStringLiteral("3 h ago"));
}

TEST(AModuleInError, ThatAnswersAgainSaysSinceWhenInItsTip) {
    SuppressionState state;
    state.isThere = state.isLive = true;
    ModuleStatusView module;
    module.state = QStringLiteral("Error");
    module.reason = QStringLiteral("Connection refused (111)");
    state.modules.push_back(module);
    ModuleStatusModel model;
    model.Show(state);
    const QModelIndex reason = model.index(0, ModuleStatusModel::Reason);
    EXPECT_EQ(reason.data(Qt::ToolTipRole), reason.data());
    state.modules[0].reason = QStringLiteral("answers again, reconnect it");
    state.modules[0].answersAgainSince =
        QDateTime(QDate::currentDate(), QTime(9, 5, 7)).toUTC().toString(Qt::ISODateWithMs);
    model.Show(state);
    EXPECT_EQ(reason.data().toString(), QStringLiteral("answers again, reconnect it"));
    EXPECT_EQ(reason.data(Qt::ToolTipRole).toString(),
              QStringLiteral("answers again, reconnect it\n"
                             "It answers since 09:05:07, and blanks nothing until it is connected anew."));
    EXPECT_EQ(model.index(0, ModuleStatusModel::State).data().toString(), QStringLiteral("Error"));
}

}  // namespace
