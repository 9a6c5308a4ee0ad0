// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/mcslogdisplay.h>

#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <QtCore/QStringList>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtGui/QTextLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTextEdit>

/// A display that is bound to a log message of the server.
class LogDisplayTest : public testing::Test {
  protected:
    using Text = values::Value<QString>;

    LogDisplayTest() {
        m_message = treeaccess::PutValue<Text>(s_parent, "LogMessage");
        m_message->SetDelivery(values::EDelivery::EveryChange);
    }

    QTextEdit& Area() const { return *m_display.findChild<QTextEdit*>(QStringLiteral("LogTextEdit")); }
    QPushButton& Button(const char* name) const {
        return *m_display.findChild<QPushButton*>(QString::fromLatin1(name));
    }
    /// What a person reads, a message each.
    QStringList Lines() const {
        const QString text = Area().toPlainText();
        return text.isEmpty() ? QStringList() : text.split(QLatin1Char('\n'));
    }
    void Log(const QString& message) { m_message->SetValue(message); }
    void LogLines(int count) {
        for (int i = 1; i <= count; ++i)
            Log(QStringLiteral("line %1").arg(i));
    }
    /// Lets everything that has come be laid out.
    void Settle() {
        const QTextDocument& document = *Area().document();
        EXPECT_TRUE(WaitUntil([&] { return document.lastBlock().layout()->lineCount() > 0; }));
    }
    bool Bind() { return m_display.SetLogMessage_ValuePath(s_path); }

    inline static const QString s_parent = QStringLiteral("/MultiChannelServer/Status");
    inline static const QString s_path = QStringLiteral("/MultiChannelServer/Status/LogMessage");

    values::Tree m_tree;
    Text* m_message;
    MCSLogDisplay m_display;
};
