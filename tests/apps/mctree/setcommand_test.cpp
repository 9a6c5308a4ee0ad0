// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mctree/commandfixture.h>
#include <tests/support/systemtext.h>

#include <QtCore/QTemporaryFile>

#include <cerrno>

using namespace mctree;

namespace {

class SetCommandTest : public CommandFixture {
  protected:
    void SetUp() override {
        Add(Server(), "SweepTime", new values::ValueNumeric<int>(1, 0, 5000));
        Add(Server(), "Comment", new values::Value<QString>(QStringLiteral("before")));
        AddNode(Server(), "Node");
    }
};

TEST_F(SetCommandTest, WhatIsDoneNeedsNoWords) {
    QString asked;
    client.answer = [&asked](values::TreeItem& item) {
        asked = static_cast<values::Value<QString>&>(item).GetValue();
    };
    EXPECT_TRUE(RunConnected(Words({"set", "/Comment", "after"})).IsDone());
    EXPECT_TRUE(output.isEmpty());
    EXPECT_EQ(asked, QStringLiteral("after"));
}

TEST_F(SetCommandTest, AnEqualContentIsDoneWithoutAnAnswer) {
    client.answer = nullptr;
    EXPECT_TRUE(RunConnected(Words({"set", "/Comment", "before"})).IsDone());
}

TEST_F(SetCommandTest, AContentBeyondTheLimitsIsToldWithWhatHolds) {
    const Outcome outcome = RunConnected(Words({"set", "/SweepTime", "6 ms"}));
    EXPECT_TRUE(outcome.IsDone());
    EXPECT_EQ(outcome.message, QStringLiteral("/SweepTime holds 5 ms (0 us .. 5 ms)"));
    EXPECT_EQ(output, QByteArray("5000\n"));
}

TEST_F(SetCommandTest, WhatTheServerMakesOfItIsTold) {
    client.answer = [](values::TreeItem& item) {
        static_cast<values::Value<QString>&>(item).SetValue(QStringLiteral("AFTER"));
    };
    const Outcome outcome = RunConnected(Words({"set", "/Comment", "after"}));
    EXPECT_TRUE(outcome.IsDone());
    EXPECT_EQ(outcome.message, QStringLiteral("/Comment holds AFTER"));
    EXPECT_EQ(output, QByteArray("AFTER\n"));
}

TEST_F(SetCommandTest, WhatIsDeniedIsToldWithTheReason) {
    client.answer = [](values::TreeItem& item) {
        static_cast<values::Value<QString>&>(item).SetValue(QStringLiteral("before"));
        values::Refusals::Instance().Report(&item, item.GetPathName(), QStringLiteral("role \"guest\"\n"));
    };
    const Outcome outcome = RunConnected(Words({"set", "/Comment", "after"}));
    EXPECT_EQ(outcome.code, EExitCode::Refused);
    EXPECT_EQ(outcome.message, QStringLiteral("/Comment: role \"guest\"\\n"));
    EXPECT_TRUE(output.isEmpty());
}

TEST_F(SetCommandTest, WhatHasGoneIsTold) {
    client.answer = [this](values::TreeItem& item) { tree.Delete(&item); };
    const Outcome outcome = RunConnected(Words({"set", "/Comment", "after"}));
    EXPECT_EQ(outcome.code, EExitCode::Refused);
    EXPECT_EQ(outcome.message, QStringLiteral("/Comment: has gone"));
}

TEST_F(SetCommandTest, WithoutAnAnswerNothingIsKnown) {
    client.answer = nullptr;
    const Outcome outcome = RunConnected(Words({"set", "/Comment", "after", "--timeout", "20"}));
    EXPECT_EQ(outcome.code, EExitCode::NoConnection);
    EXPECT_EQ(outcome.message,
              QStringLiteral("/Comment: no answer, so it is not known whether this was done"));
}

TEST_F(SetCommandTest, ALostConnectionIsNoAnswer) {
    client.answer = [this](values::TreeItem&) { client.Disconnect(); };
    EXPECT_EQ(RunConnected(Words({"set", "/Comment", "after"})).code, EExitCode::NoConnection);
}

TEST_F(SetCommandTest, AWrongContentIsWrongUsage) {
    const Outcome outcome = RunConnected(Words({"set", "/SweepTime", "so\x1bon"}));
    EXPECT_EQ(outcome.code, EExitCode::Usage);
    EXPECT_EQ(outcome.message,
              QStringLiteral("/SweepTime: \"so\\x1bon\" is no whole number, alone or with us, ms or s"));
}

TEST_F(SetCommandTest, ANodeCannotBeSet) {
    EXPECT_EQ(RunConnected(Words({"set", "/Node", "1"})).message,
              QStringLiteral("/Node: is a node, which has no content"));
}

TEST_F(SetCommandTest, JsonTellsHowItEnded) {
    EXPECT_TRUE(RunConnected(Words({"set", "/SweepTime", "2", "--json"})).IsDone());
    EXPECT_EQ(output,
              QByteArray("{\"content\":2,\"path\":\"/SweepTime\",\"result\":\"done\",\"unit\":\"us\"}\n"));
}

TEST_F(SetCommandTest, JsonTellsWhatHolds) {
    EXPECT_TRUE(RunConnected(Words({"set", "/SweepTime", "-1", "--json"})).IsDone());
    EXPECT_EQ(output,
              QByteArray("{\"content\":0,\"path\":\"/SweepTime\",\"result\":\"changed\",\"unit\":\"us\"}\n"));
}

TEST_F(SetCommandTest, JsonTellsWhyNot) {
    client.answer = [](values::TreeItem& item) {
        values::Refusals::Instance().Report(&item, item.GetPathName(), QStringLiteral("no"));
    };
    EXPECT_EQ(RunConnected(Words({"set", "/SweepTime", "2", "--json"})).code, EExitCode::Refused);
    EXPECT_EQ(Object()[QStringLiteral("result")].toString(), QStringLiteral("refused"));
    EXPECT_EQ(Object()[QStringLiteral("reason")].toString(), QStringLiteral("/SweepTime: no"));
}

TEST_F(SetCommandTest, SeveralAreSetToTheSame) {
    EXPECT_TRUE(RunConnected(Words({"set", "/SweepTime", "/Comm*", "7"})).IsDone());
    EXPECT_EQ(client.Written(), Words({"SweepTime", "Comment"}));
}

TEST_F(SetCommandTest, WhatFailsIsToldAndTheRestIsSet) {
    const Outcome outcome = RunConnected(Words({"set", "/Nothing", "/SweepTime", "/Comment", "/N*", "soon"}));
    EXPECT_EQ(outcome.code, EExitCode::Usage);
    EXPECT_EQ(outcome.message,
              QStringLiteral("not found: /Nothing\nnothing matches /N*\n/SweepTime: \"soon\" "
                             "is no whole number, alone or with us, ms or s"));
    EXPECT_EQ(client.Written(), Words({"Comment"}));
}

/// What is set is a request, whose answer is another value.
class SetRequestTest : public CommandFixture {
  protected:
    void SetUp() override {
        values::Node& request = AddNode(AddNode(Server(), "Mine"), "Request");
        Add(request, "Frequency", new values::ValueNumeric<double>(5e6, 3e5, 3e9));
        Add(request, "Calibrate", new values::Value<bool>(false));
        Add(request, "Answer", new values::Value<QString>(QStringLiteral("refused: long ago")))
            .SetDelivery(values::EDelivery::EveryChange);
    }
    /// Lets the server answer requests with \a answers, one after the other, after it has taken the content.
    void AnswerWith(QStringList answers) {
        client.answer = [this, answers](values::TreeItem&) {
            client.Soon([this, answers] {
                for (const QString& answer : answers)
                    AnswerValue().SetValue(answer);
            });
        };
    }
    values::Value<QString>& AnswerValue() { return Local<values::Value<QString>>("", 1); }
};

TEST_F(SetRequestTest, ARefusedRequestIsARefusal) {
    AnswerWith(Words({"refused: needs MayAlterFreqSingle"}));
    const Outcome outcome = RunConnected(Words({"set", "/Mine/Request/Frequency", "6M"}));
    EXPECT_EQ(outcome.code, EExitCode::Refused);
    EXPECT_EQ(outcome.message, QStringLiteral("/Mine/Request/Frequency: needs MayAlterFreqSingle"));
}

struct AskedRow {
    const char* name;
    const char* typed;
    const char* answer;
};

class SetFrequencyTest : public SetRequestTest, public testing::WithParamInterface<AskedRow> {};

TEST_P(SetFrequencyTest, IsRepeatedWithItsUnit) {
    AnswerWith(Words({"done: tuned"}));
    const Outcome outcome = RunConnected(Words({"set", "/Mine/Request/Frequency", GetParam().typed}));
    EXPECT_TRUE(outcome.IsDone());
    EXPECT_EQ(outcome.message, QString());
    EXPECT_EQ(output, QByteArray(GetParam().answer));
}

INSTANTIATE_TEST_SUITE_P(, SetFrequencyTest,
                         testing::Values(AskedRow{"OfMegahertz", "6M", "6 MHz\n"},
                                         AskedRow{"OfHertzWithoutAUnit", "1184000", "1.184 MHz\n"},
                                         AskedRow{"OfGroupedKilohertz", "118 400 kHz", "118.4 MHz\n"},
                                         AskedRow{"WithAComma", "121,5 MHz", "121.5 MHz\n"}),
                         RowName());

TEST_F(SetRequestTest, AFrequencyThatIsDoubtfulIsNotAskedFor) {
    for (const char* typed : {"12 15 kHz", "1.2.3", "-5 MHz", "inf", "1e999", "abc"})
        EXPECT_EQ(RunConnected(Words({"set", "--", "/Mine/Request/Frequency", typed})).code, EExitCode::Usage)
            << typed;
    EXPECT_TRUE(client.Written().isEmpty());
}

TEST_F(SetRequestTest, TheButtonOfAGrantedRequestSpringsBackWithoutAWord) {
    client.answer = [this](values::TreeItem& item) {
        static_cast<values::Value<bool>&>(item).SetValue(false);
        client.Soon([this] { AnswerValue().SetValue(QStringLiteral("done: calibrating")); });
    };
    const Outcome outcome = RunConnected(Words({"set", "/Mine/Request/Calibrate", "on", "--json"}));
    EXPECT_TRUE(outcome.IsDone());
    EXPECT_EQ(outcome.message, QString());
    EXPECT_EQ(Object()[QStringLiteral("result")].toString(), QStringLiteral("done"));
    EXPECT_EQ(Object()[QStringLiteral("answer")].toString(), QStringLiteral("done: calibrating"));
}

TEST_F(SetRequestTest, WhatEndsByItselfIsNoAnswer) {
    AnswerWith(Words({"ended: the ORV is not connected", "refused: the ORV is not connected"}));
    EXPECT_EQ(RunConnected(Words({"set", "/Mine/Request/Frequency", "6M"})).message,
              QStringLiteral("/Mine/Request/Frequency: the ORV is not connected"));
}

TEST_F(SetRequestTest, WithoutAnAnswerNothingIsKnown) {
    const Outcome outcome = RunConnected(Words({"set", "/Mine/Request/Frequency", "6M", "--timeout", "20"}));
    EXPECT_EQ(outcome.code, EExitCode::NoConnection);
    EXPECT_EQ(outcome.message,
              QStringLiteral("/Mine/Request/Frequency: no answer, so it is not known whether this was done"));
}

TEST_F(SetRequestTest, WhatHoldsAlreadyIsNotAsked) {
    EXPECT_TRUE(RunConnected(Words({"set", "/Mine/Request/Calibrate", "off"})).IsDone());
    EXPECT_TRUE(client.Written().isEmpty());
}

TEST_F(SetRequestTest, ASaveThatFailedIsARefusal) {
    Add(Server(), "SaveConfig", new values::Value<bool>(false));
    Add(Server(), "SaveConfigAnswer", new values::Value<QString>())
        .SetDelivery(values::EDelivery::EveryChange);
    client.answer = [this](values::TreeItem& item) {
        AnswerValue().SetValue(QStringLiteral("failed: no space left"));
        static_cast<values::Value<bool>&>(item).SetValue(false);
    };
    const Outcome outcome = RunConnected(Words({"set", "/SaveConfig", "true"}));
    EXPECT_EQ(outcome.code, EExitCode::Refused);
    EXPECT_EQ(outcome.message, QStringLiteral("/SaveConfig: no space left"));
}

/// What is set stands in a file.
class SetLinesTest : public SetCommandTest {
  protected:
    Outcome SetLines(const QByteArray& lines) {
        QTemporaryFile file;
        EXPECT_TRUE(file.open());
        file.write(lines);
        file.close();
        return RunConnected({QStringLiteral("set"), QStringLiteral("-f"), file.fileName()});
    }
};

TEST_F(SetLinesTest, EachLineIsSet) {
    QString comment;
    client.answer = [&comment](values::TreeItem& item) {
        if (auto* const text = dynamic_cast<values::Value<QString>*>(&item)) comment = text->GetValue();
    };
    const Outcome outcome = SetLines("# a comment\n\n/SweepTime = 3 us\r\n/Comment\ta\\tb\\\\c\n");
    EXPECT_EQ(outcome.message, QString());
    EXPECT_TRUE(outcome.IsDone());
    EXPECT_EQ(client.Written(), Words({"SweepTime", "Comment"}));
    EXPECT_EQ(comment, QStringLiteral("a\tb\\c"));
}

TEST_F(SetLinesTest, WhatFailsIsToldWithItsLineAndTheRestIsSet) {
    const Outcome outcome = SetLines("/Nothing 1\n/SweepTime\n/SweepTime soon\n/Comment x");
    EXPECT_EQ(outcome.code, EExitCode::Usage);
    EXPECT_EQ(outcome.message,
              QStringLiteral("line 1: not found: /Nothing\nline 2: a path and a value are needed\nline 3: "
                             "/SweepTime: \"soon\" is no whole number, alone or with us, ms or s"));
    EXPECT_EQ(client.Written(), Words({"Comment"}));
}

TEST_F(SetLinesTest, ARefusalIsOfItsLineOnly) {
    int written = 0;
    client.answer = [&written](values::TreeItem& item) {
        if (++written == 1)
            values::Refusals::Instance().Report(&item, item.GetPathName(), QStringLiteral("not now"));
    };
    const Outcome outcome = SetLines("/Comment a\n/Comment b\n");
    EXPECT_EQ(outcome.message, QStringLiteral("line 1: /Comment: not now"));
    EXPECT_EQ(written, 2);
}

TEST_F(SetLinesTest, MoreLinesThanASessionHasSubscriptionsAreNoTrouble) {
    QByteArray lines;
    for (int i = 0; i < 300; ++i) {
        const QByteArray name = "v" + QByteArray::number(i);
        Add(Server(), name.constData(), new values::Value<int>(0));
        lines += '/' + name + " 1\n";
    }
    EXPECT_EQ(SetLines(lines).message, QString());
    EXPECT_EQ(client.Written().size(), 300);
    EXPECT_LE(client.MostTics(), 128);
}

TEST_F(SetLinesTest, AnswersOfTheServerAreLeftAsTheyAre) {
    Add(Server(), "SaveConfigAnswer", new values::Value<QString>(QStringLiteral("done: later")))
        .SetDelivery(values::EDelivery::EveryChange);
    const Outcome outcome = SetLines("/SaveConfigAnswer\tdone: saved\n/Mine/Request/Answer x\n/Comment x\n");
    EXPECT_EQ(outcome.code, EExitCode::Done);
    EXPECT_EQ(
        outcome.message,
        QStringLiteral("line 1: /SaveConfigAnswer: is an answer of the server, and is left as it is\n"
                       "line 2: /Mine/Request/Answer: is an answer of the server, and is left as it is"));
    EXPECT_EQ(client.Written(), Words({"Comment"}));
}

TEST_F(SetLinesTest, AFileThatIsNotThereIsWrongUsage) {
    const Outcome outcome = RunConnected(Words({"set", "-f", "/nowhere/lines"}));
    EXPECT_EQ(outcome.code, EExitCode::Usage);
    EXPECT_EQ(outcome.message, QStringLiteral("/nowhere/lines: ") + SystemText(ENOENT, WindowsHasNoSuchPath));
}

}  // namespace
