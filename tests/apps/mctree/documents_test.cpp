// SPDX-License-Identifier: Apache-2.0
// The manual page, the help and the completions name what there is, and nothing else.
#include <apps/mctree/command/help.h>
#include <apps/mctree/command/options.h>

#include <tests/apps/mctree/commandfixture.h>

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

using namespace mctree;

namespace {

QString Packaged(const char* name) {
    QFile file(QStringLiteral(MCS_PACKAGING) + QLatin1Char('/') + QLatin1String(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return QString::fromUtf8(file.readAll());
}

QString ManualPage() {
    QString text = Packaged("man/mctree.1").replace(QStringLiteral("\\-"), QStringLiteral("-"));
    return text.remove(QRegularExpression(QStringLiteral("\\\\f[BIR]")));
}

QString HelpTexts() {
    QString all = HelpText(ECommand::None);
    for (ECommand topic : {ECommand::List, ECommand::Get, ECommand::Set, ECommand::Watch, ECommand::Hold,
                           ECommand::Info, ECommand::Events, ECommand::Stations})
        all += HelpText(topic);
    return all;
}

QString Bash() {
    return Packaged("completions/mctree.bash");
}

QString Zsh() {
    return Packaged("completions/_mctree");
}

/// In which options stand without their dashes.
QString Fish() {
    const QStringList lines = Packaged("completions/mctree.fish").split(QLatin1Char('\n'));
    QString text = lines.filter(QRegularExpression(QStringLiteral("^complete "))).join(QLatin1Char('\n'));
    text.replace(QRegularExpression(QStringLiteral(" -l ([a-z-]+)")), QStringLiteral(" --\\1"));
    return text.replace(QRegularExpression(QStringLiteral(" -s ([a-zA-Z])")), QStringLiteral(" -\\1"));
}

struct DocumentRow {
    const char* name;
    QString (*read)();
};

class DocumentTest : public testing::TestWithParam<DocumentRow> {};

TEST_P(DocumentTest, NamesEveryOptionAndCommand) {
    const QString text = GetParam().read();
    QStringList words = CommandNames();
    for (const Option& option : Option::All())
        words += QLatin1String(option.name);
    for (const QString& word : words) {
        const QRegularExpression alone(QStringLiteral("(?<![\\w-])%1(?![\\w-])").arg(word));
        EXPECT_TRUE(text.contains(alone)) << word.toStdString();
    }
}

TEST_P(DocumentTest, NamesNoOptionThatThereIsNot) {
    const QString text = GetParam().read();
    const QRegularExpression option(QStringLiteral("(?<![\\w-])--[a-z][a-z-]*"));
    for (auto matches = option.globalMatch(text); matches.hasNext();) {
        const QString name = matches.next().captured();
        EXPECT_NE(Option::Find(name), nullptr) << name.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(, DocumentTest,
                         testing::Values(DocumentRow{"ManualPage", ManualPage},
                                         DocumentRow{"Help", HelpTexts}, DocumentRow{"Bash", Bash},
                                         DocumentRow{"Zsh", Zsh}, DocumentRow{"Fish", Fish}),
                         RowName());

TEST(Help, OfACommandIsItsOwn) {
    for (const QString& name : CommandNames()) {
        Arguments arguments;
        ASSERT_TRUE(ParseArguments({QStringLiteral("help"), name}, {}, &arguments).IsDone());
        EXPECT_EQ(arguments.command, ECommand::Help);
        const QString text = HelpText(arguments.topic);
        const QString own = name == QLatin1String("help") ? QStringLiteral("usage: mctree [options] COMMAND")
                                                          : QStringLiteral("usage: mctree ") + name;
        EXPECT_TRUE(text.startsWith(own)) << text.toStdString();
        ASSERT_TRUE(ParseArguments({name, QStringLiteral("--help")}, {}, &arguments).IsDone());
        EXPECT_EQ(HelpText(arguments.topic), text);
    }
}

}  // namespace
