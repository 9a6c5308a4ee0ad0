// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mctree/command/commands.h>
#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/values/valueselection.h>

#include <tests/apps/mctree/servedvtclient.h>
#include <tests/support/printing.h>
#include <tests/support/tracerecorder.h>

#include <gmock/gmock.h>

#include <QtCore/QByteArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTimer>

/// Runs commands against a server that the test makes up: values below `server`.
class CommandFixture : public testing::Test {
  protected:
    values::Node& Server() { return client.server; }

    /// Adds \a value to the server as \a name below \a parent.
    template <class V>
    V& Add(values::Node& parent, const char* name, V* value) {
        value->SetName(QString::fromUtf8(name));
        std::unique_ptr<values::TreeItem> item(value);
        parent.AddChild(item);
        return *value;
    }
    values::Node& AddNode(values::Node& parent, const char* name) {
        std::unique_ptr<values::TreeItem> item = std::make_unique<values::Node>(QString::fromUtf8(name));
        auto& node = static_cast<values::Node&>(*item);
        parent.AddChild(item);
        return node;
    }

    /// Runs the command line \a words, which must be a right one. What it prints goes to `output`, and what
    /// it says beside that comes together in the message, a line each.
    mctree::Outcome Run(const QStringList& words) {
        mctree::Arguments arguments;
        EXPECT_EQ(mctree::ParseArguments(words, {}, &arguments).message, QString());
        QStringList told;
        const mctree::Report::Tell tell = [&told](const QString& line) { told += line; };
        mctree::Session session(client, arguments.Retry(), tell);
        const auto interrupt = [&session] { session.Interrupt(); };
        if (isInterrupted) client.Soon(interrupt);
        QObject deadline;
        QTimer::singleShot(10000, &deadline, [interrupt] {
            ADD_FAILURE() << "the command does not end";
            interrupt();
        });
        mctree::Printer printer(
            [this](const QByteArray& bytes) {
                output += bytes;
                ++writes;
                if (onWrite) onWrite();
                return isOutputOpen;
            },
            style);
        mctree::Outcome outcome = mctree::Run({arguments, session, printer, tell});
        if (!outcome.message.isEmpty()) told += outcome.message;
        outcome.message = told.join(QLatin1Char('\n'));
        return outcome;
    }
    /// Likewise, for a server that answers.
    mctree::Outcome RunConnected(const QStringList& words) {
        client.ConnectSoon();
        return Run(words);
    }

    QStringList Lines() const {
        return QString::fromUtf8(output).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    QJsonObject Object() const { return QJsonDocument::fromJson(output).object(); }

    /// The local copy of the server's \a path, of the type V, in the mirror of that number.
    template <class V>
    V& Local(const char* path, int mirror = 0) {
        const QString place = client.Tics().at(static_cast<std::size_t>(mirror))->GetLocalPath();
        return dynamic_cast<V&>(*tree.FindItem(place + QLatin1Char('/') + QString::fromUtf8(path)));
    }

    const TraceRecorder traces;  // refusals are traced, and that is no news here
    values::Tree tree;
    ServedVtClient client;
    mctree::OutputStyle style;
    QByteArray output;
    int writes = 0;
    bool isOutputOpen = true;
    bool isInterrupted = false;  ///< as soon as the event loop runs
    std::function<void()> onWrite;
};

/// Words of a command line.
inline QStringList Words(std::initializer_list<const char*> words) {
    QStringList list;
    for (const char* word : words)
        list += QString::fromUtf8(word);
    return list;
}

/// The names of rows of a table in a test.
struct RowName {
    template <class Info>
    std::string operator()(const Info& row) const {
        return row.param.name;
    }
};
