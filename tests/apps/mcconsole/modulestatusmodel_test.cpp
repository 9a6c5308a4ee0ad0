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

}  // namespace
