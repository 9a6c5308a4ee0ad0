// SPDX-License-Identifier: Apache-2.0
// How answers of servers are told apart.
#include <apps/mcconsole/tune/serveranswer.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

namespace {

using EKind = ServerAnswer::EKind;

struct KindRow {
    const char* name;
    const char* text;
    CodedText code;  ///< says nothing: the server tells none
    EKind kind;
};

class KindsOfServerAnswers : public testing::TestWithParam<KindRow> {};

TEST_P(KindsOfServerAnswers, AreToldByTheCodeWhereThereIsOne) {
    const QString code = GetParam().code.IsEmpty() ? QString() : GetParam().code.ToJsonText();
    EXPECT_EQ(ServerAnswer(QString::fromLatin1(GetParam().text), code).GetKind(), GetParam().kind);
}

QString X() {
    return QStringLiteral("x");
}

INSTANTIATE_TEST_SUITE_P(
    Rows, KindsOfServerAnswers,
    testing::Values(KindRow{"Done", "done: x", {ECode::Done, {X()}}, EKind::Done},
                    KindRow{"Unsupervised",
                            "done, not supervised: x",
                            {ECode::DoneUnsupervised, {X()}},
                            EKind::DoneUnsupervised},
                    KindRow{"Refused", "refused: x", {ECode::Refused, {X()}}, EKind::Refused},
                    KindRow{"Ended", "ended: x", {ECode::Ended, {X()}}, EKind::Ended},
                    KindRow{"AWordThatReadsAsARefusal",
                            "refused: x",
                            {ECode::Word, {QStringLiteral("refused: x")}},
                            EKind::Unknown},
                    KindRow{"OfAServerWithoutCodes", "refused: x", {}, EKind::Refused},
                    KindRow{"WithTheCodeOfTheOneBefore", "refused: x", {ECode::Done, {X()}}, EKind::Refused},
                    KindRow{"WithATextInPlaceOfACode", "ended: x", CodedText(QStringLiteral("ended: x")),
                            EKind::Ended},
                    KindRow{"OfANewerServer", "postponed: x", {}, EKind::Unknown}),
    [](const testing::TestParamInfo<KindRow>& row) { return std::string(row.param.name); });

TEST(ServerAnswer, GivesTheReasonWithoutItsKind) {
    EXPECT_EQ(ServerAnswer(QStringLiteral("refused: 121.5 MHz: taken"), QString()).GetReason(),
              QStringLiteral("121.5 MHz: taken"));
    EXPECT_EQ(
        ServerAnswer(QStringLiteral("refused: x"), CodedText(ECode::Refused, {X()}).ToJsonText()).GetReason(),
        X());
}

}  // namespace
