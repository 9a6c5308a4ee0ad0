// SPDX-License-Identifier: Apache-2.0
#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/values/valueselection.h>
#include <platform/vtclient/vtserver.h>

#include <tests/support/doubles/testaccess.h>
#include <tests/support/programrunner.h>

#include <gmock/gmock.h>

namespace {

/// The client that was written from the protocol's page alone, against our server.
class Interop : public testing::Test, protected ProgramRunner {
  protected:
    Interop() {
        access.wantedToken = QStringLiteral("secret");
        access.unreadable.insert(QStringLiteral("/Hidden"));
        access.unwritable.insert(QStringLiteral("/S/Locked"));
        access.creatable = QStringLiteral("/S/New");
        VtServerOptions options;
        options.port = 0;
        QString error;
        EXPECT_TRUE(server.Listen(options, &error)) << error.toStdString();
    }

    template <class V>
    V& Add(const char* name, V* value) {
        value->SetName(QString::fromUtf8(name));
        EXPECT_TRUE(tree.AddValue(QStringLiteral("/S"), value));
        return *value;
    }

    void Start(std::initializer_list<const char*> words, const char* token = "secret") {
        QStringList arguments{QStringLiteral(INTEROP_CLIENT), QStringLiteral("--token"),
                              QString::fromUtf8(token), QStringLiteral("127.0.0.1"),
                              QString::number(server.GetPort())};
        for (const char* word : words)
            arguments += QString::fromUtf8(word);
        StartProgram(QStringLiteral(INTEROP_PYTHON), arguments);
    }
    int Run(std::initializer_list<const char*> words, const char* token = "secret") {
        Start(words, token);
        return WaitForEnd();
    }

    values::Tree tree;
    TestAccess access;
    VtServer server{access};
};

TEST_F(Interop, EveryKindIsListedInTheOrderOfTheTree) {
    Add("Bool", new values::Value<bool>(true));
    Add("Int", new values::Value<int>(-2147483647 - 1));
    Add("Text", new values::Value<QString>(QStringLiteral("\u00b5\x1b[2J")));
    Add("Limited", new values::ValueNumeric<int>(5, 0, 10));
    Add("Number", new values::ValueNumeric<double>(0.1, -1, 1));
    auto& selection = Add("Selection", new values::ValueSelection());
    selection.AddItem(QStringLiteral("Idle"), 0, 0);
    selection.AddItem(QStringLiteral("Scan"), 0.5, 4);
    selection.Select(4);
    Add("None", new values::ValueSelection());
    Add("List", new values::ValueList<double>()).SetItems({1, 2.5});
    EXPECT_EQ(Run({"list", "/"}), 0) << errors.constData();
    EXPECT_EQ(output, QByteArray("/ node\n"
                                 "/S node\n"
                                 "/S/Bool boolean true\n"
                                 "/S/Int integer -2147483648\n"
                                 "/S/Text text \xc2\xb5\\x1b[2J\n"
                                 "/S/Limited limited-integer 5\n"
                                 "/S/Number number 0.1\n"
                                 "/S/Selection selection Scan\n"
                                 "/S/None selection (none)\n"
                                 "/S/List list 1.0,2.5\n"));
}

TEST_F(Interop, AValueAloneIsASubtree) {
    Add("Int", new values::Value<int>(7));
    EXPECT_EQ(Run({"list", "/S/Int"}), 0) << errors.constData();
    EXPECT_EQ(output, QByteArray("/S/Int integer 7\n"));
}

TEST_F(Interop, AGreatTreeComesWhole) {
    constexpr int Count = 50000;  // many more messages than may go unacknowledged
    for (int i = 0; i < Count; ++i)
        Add(QByteArray::number(i).constData(), new values::Value<QString>(QString(100, QLatin1Char('x'))));
    EXPECT_EQ(Run({"list", "/S"}), 0) << errors.constData();
    EXPECT_EQ(output.count('\n'), Count + 1);
}

TEST_F(Interop, ChangesAreWatched) {
    auto& number = Add("Number", new values::ValueNumeric<double>(0, 0, 10));
    auto& selection = Add("Selection", new values::ValueSelection());
    Start({"watch", "/S", "7"});
    ASSERT_TRUE(WaitUntil([this] { return output.contains("watching\n"); })) << errors.constData();
    number.SetValue(2.5);
    ASSERT_TRUE(WaitUntil([this] { return output.contains("/S/Number number 2.5\n"); }));
    number.SetMax(2);
    ASSERT_TRUE(WaitUntil([this] { return output.contains("/S/Number number 2.0\n"); }))
        << output.constData();
    selection.AddItem(QStringLiteral("Idle"), 0, 0);
    ASSERT_TRUE(WaitUntil([this] { return output.contains("items /S/Selection selection (none)\n"); }));
    Add("New", new values::Value<bool>(true));
    ASSERT_TRUE(WaitUntil([this] { return output.contains("added /S/New boolean true\n"); }));
    tree.Delete(&number);
    ASSERT_TRUE(WaitUntil([this] { return output.contains("removed /S/Number\n"); }));
    selection.Select(0);
    EXPECT_EQ(WaitForEnd(), 0) << errors.constData();
    EXPECT_TRUE(output.endsWith("/S/Selection selection Idle\n")) << output.constData();
}

TEST_F(Interop, EveryOccurrenceIsDelivered) {
    auto& log = Add("Log", new values::Value<QString>());
    log.SetDelivery(values::EDelivery::EveryChange);
    Start({"watch", "/S", "500"});
    ASSERT_TRUE(WaitUntil([this] { return output.contains("watching\n"); })) << errors.constData();
    for (int i = 0; i < 500; ++i)
        log.SetValue(QStringLiteral("same"));
    EXPECT_EQ(WaitForEnd(), 0) << errors.constData();
    EXPECT_EQ(output.count("/S/Log text same\n"), 500);
}

TEST_F(Interop, WritesAreAnswered) {
    auto& number = Add("Number", new values::ValueNumeric<double>(0, 0, 10));
    EXPECT_EQ(Run({"write", "/S/Number", "2.5"}), 0) << errors.constData();
    EXPECT_EQ(output, QByteArray("done\n"));
    EXPECT_EQ(number.GetValue(), 2.5);
    EXPECT_EQ(Run({"write", "/S/Number", "99"}), 0) << errors.constData();
    EXPECT_EQ(output, QByteArray("done, but 10.0 holds\n"));
    EXPECT_EQ(number.GetValue(), 10);
    Add("Locked", new values::Value<int>(1));
    EXPECT_EQ(Run({"write", "/S/Locked", "2"}), 1);
    EXPECT_EQ(errors, QByteArray("not for you\n"));
}

TEST_F(Interop, ASelectionIsWrittenByKey) {
    auto& selection = Add("Selection", new values::ValueSelection());
    selection.AddItem(QStringLiteral("Idle"), 0, 0);
    selection.AddItem(QStringLiteral("Scan"), 0.5, 4);
    EXPECT_EQ(Run({"write", "/S/Selection", "Scan"}), 0) << errors.constData();
    EXPECT_EQ(selection.GetCurrentKey(), 4);
}

TEST_F(Interop, ItemsAreCreatedWhereThatIsAllowed) {
    tree.ProvideNode(QStringLiteral("/S"));
    EXPECT_EQ(Run({"create", "/S", "/S/New/Deep/Number", "number", "2.5"}), 0) << errors.constData();
    EXPECT_EQ(Run({"create", "/S", "/S/New/Mode", "selection", "Idle"}), 0) << errors.constData();
    EXPECT_EQ(Run({"create", "/S", "/S/New/Node", "node"}), 0) << errors.constData();
    EXPECT_EQ(Run({"list", "/S/New"}), 0) << errors.constData();
    EXPECT_EQ(output, QByteArray("/S/New node\n"
                                 "/S/New/Deep node\n"
                                 "/S/New/Deep/Number number 2.5\n"
                                 "/S/New/Mode selection Idle\n"
                                 "/S/New/Node node\n"));
    EXPECT_EQ(Run({"create", "/S", "/S/Old", "integer", "1"}), 1);
    EXPECT_EQ(errors, QByteArray("nothing is created here\n"));
}

TEST_F(Interop, WhatIsNotThereOrNotShownIsTold) {
    tree.ProvideNode(QStringLiteral("/Hidden"));
    EXPECT_EQ(Run({"list", "/Nothing"}), 1);
    EXPECT_EQ(errors, QByteArray("not found\n"));
    EXPECT_EQ(Run({"list", "/Hidden"}), 1);
    EXPECT_TRUE(errors.contains("/Hidden")) << errors.constData();
}

TEST_F(Interop, WithoutTheTokenNobodyComesIn) {
    EXPECT_EQ(Run({"list", "/"}, "guessed"), 3);
    EXPECT_EQ(errors, QByteArray("refused with code 2: the token of '' is wrong\n"));
}

}  // namespace
