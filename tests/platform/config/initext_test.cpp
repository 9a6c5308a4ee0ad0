// SPDX-License-Identifier: Apache-2.0
// The text of a configuration file, by itself and beside what another reader and writer of the same format
// makes of it.
#include <platform/config/store/inireader.h>
#include <platform/config/store/iniwriter.h>

#include <tests/support/printing.h>

#include <gmock/gmock.h>

#include <QtCore/QFile>
#include <QtCore/QRandomGenerator>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextCodec>

namespace {

CfgContents ReadText(const QByteArray& bytes) {
    CfgContents contents;
    QString defect;
    EXPECT_TRUE(IniReader::Read(bytes, &contents, &defect)) << defect.toStdString();
    return contents;
}

struct Line {
    const char* name;
    QByteArray bytes;
    CfgContents contents;
};

void PrintTo(const Line& line, std::ostream* stream) {
    *stream << line.name;
}

CfgContents One(const char* key, const char* content) {
    return {{QString::fromUtf8(key), QString::fromUtf8(content)}};
}

class IniLines : public testing::TestWithParam<Line> {};

TEST_P(IniLines, AreReadAsTheyAreMeant) {
    EXPECT_EQ(ReadText(GetParam().bytes), GetParam().contents);
}

const Line Lines[] = {
    {"nothing", "", {}},
    {"blanks_and_comments_only", " \n\t\r\n; a = 1\n# b = 2\n  # c", {}},
    {"a_key_of_no_section", "k=1", One("k", "1")},
    {"blanks_around", " k \t= \t1 \t\n", One("k", "1")},
    {"blanks_within", "a b=c  d", One("a b", "c  d")},
    {"no_content", "k=\n", One("k", "")},
    {"an_equals_sign_in_the_content", "k=a=b", One("k", "a=b")},
    {"the_last_of_several", "k=1\nk=2", One("k", "2")},
    {"case_counts",
     "[s]\nk=1\n[S]\nk=2\nK=3",
     {{QStringLiteral("s/k"), QStringLiteral("1")},
      {QStringLiteral("S/k"), QStringLiteral("2")},
      {QStringLiteral("S/K"), QStringLiteral("3")}}},
    {"sections_go_on",
     "[S]\na=1\n[T]\n[S]\nb=2",
     {{QStringLiteral("S/a"), QStringLiteral("1")}, {QStringLiteral("S/b"), QStringLiteral("2")}}},
    {"a_section_without_a_name", "[]\nk=1", One("k", "1")},
    {"the_section_of_keys_without_one", "[S]\n[gENERAL]\nk=1", One("k", "1")},
    {"a_section_of_that_name", "[%general]\nk=1", One("general/k", "1")},
    {"a_section_below_another", "[ A/B\\C ]\nk\\l=1", One("A/B/C/k/l", "1")},
    {"slashes_that_mean_nothing", "[/A//]\n\\k\\\\l\\=1", One("A/k/l", "1")},
    {"something_behind_a_section", "[S] ; said\nk=1", One("S/k", "1")},
    {"escapes_in_names", "[%53%20%U0416]\n%3b%5B%=1", One("S \xD0\x96/;[%", "1")},
    {"broken_escapes_in_names",
     "%4=1\n%U041=2\n%zz=3\n%=4",
     {{QStringLiteral("%4"), QStringLiteral("1")},
      {QStringLiteral("%U041"), QStringLiteral("2")},
      {QStringLiteral("%zz"), QStringLiteral("3")},
      {QStringLiteral("%"), QStringLiteral("4")}}},
    {"a_comment_behind_a_content", "k=1 ; said", One("k", "1")},
    {"a_hash_in_a_content", "k=1 # 2", One("k", "1 # 2")},
    {"quotes", "k = \" a;b \" ; said", One("k", " a;b ")},
    {"quotes_in_the_middle", "k=a\" \"b", One("k", "a b")},
    {"empty_quotes", "k=\"\"", One("k", "")},
    {"lines_in_quotes",
     "k=\"a\nb=c\n\"\nl=2",
     {{QStringLiteral("k"), QStringLiteral("a\nb=c\n")}, {QStringLiteral("l"), QStringLiteral("2")}}},
    {"a_list_typed_by_hand", "k=a, b,c", One("k", "a, b,c")},
    {"a_list_in_quotes", "k=\"a\", \"b\"", One("k", "a, b")},
    {"short_escapes", "k=\\a\\b\\f\\n\\r\\t\\v\\\"\\'\\?\\\\", One("k", "\a\b\f\n\r\t\v\"'?\\")},
    {"an_escaped_blank_at_the_end", "k=a\\x20\\t \t", One("k", "a \t")},
    {"codes", "k=\\x41\\x20aC\\101\\60x",
     One("k",
         "A\xE2\x82\xAC"
         "A0x")},
    {"a_code_of_many_digits", "k=\\x1234541", One("k", "\xE4\x95\x81")},
    {"a_path_typed_by_hand", "k=C:\\dir\\xyz\\gone", One("k", "C:\\dir\\xyz\\gone")},
    {"a_line_that_goes_on", "k=a\\\nb\\\r\nc", One("k", "abc")},
    {"a_backslash_at_the_end", "k=a\\", One("k", "a\\")},
    {"a_first_at",
     "k=@@a\nl=@a",
     {{QStringLiteral("k"), QStringLiteral("@a")}, {QStringLiteral("l"), QStringLiteral("@a")}}},
    {"a_marked_text",
     "k=@String(a)\nl=@@String(a)",
     {{QStringLiteral("k"), QStringLiteral("a")}, {QStringLiteral("l"), QStringLiteral("@String(a)")}}},
    {"text_beyond_ascii", "[B\xC3\xBCro]\nt\xC3\xBCr=\xF0\x9F\x98\x80",
     One("B\xC3\xBCro/t\xC3\xBCr", "\xF0\x9F\x98\x80")},
    {"a_byte_order_mark", "\xEF\xBB\xBFk=1", One("k", "1")},
    {"ends_of_line_of_every_kind",
     "a=1\rb=2\r\nc=3\n\rd=4",
     {{QStringLiteral("a"), QStringLiteral("1")},
      {QStringLiteral("b"), QStringLiteral("2")},
      {QStringLiteral("c"), QStringLiteral("3")},
      {QStringLiteral("d"), QStringLiteral("4")}}},
};

INSTANTIATE_TEST_SUITE_P(Config, IniLines, testing::ValuesIn(Lines),
                         [](const testing::TestParamInfo<Line>& line) { return line.param.name; });

QString RandomText(QRandomGenerator& random, const QString& alphabet, int maxLength) {
    QString text;
    for (int length = random.bounded(maxLength + 1); length > 0; --length) {
        // Mostly what means something in a line, and anything else now and then.
        const bool isAny = random.bounded(8) == 0;
        text += isAny ? QChar(random.bounded(1, 0x10000)) : alphabet.at(random.bounded(alphabet.size()));
    }
    return text;
}

CfgContents RandomContents(QRandomGenerator& random, int maxKeys) {
    const QString names = QStringLiteral("abAB01 %\\=;#[]\"'@.-_,\nxuU");
    const QString texts = QStringLiteral("abAB019 \t\n\r\\\"';,=#%@[]()\a\v\u00E4\u20AC");
    CfgContents contents;
    for (int i = random.bounded(maxKeys); i >= 0; --i) {
        QString key;
        for (int depth = random.bounded(3); depth >= 0; --depth)
            key += RandomText(random, names, 6) + QStringLiteral("k/");
        contents[cfgcontents::Path(key)] = RandomText(random, texts, 12);
    }
    return contents;
}

TEST(IniText, WhateverIsWrittenReadsAsItWas) {
    QRandomGenerator random(11);
    for (int round = 0; round < 3000; ++round) {
        const CfgContents contents = RandomContents(random, 12);
        const QByteArray bytes = IniWriter::Write(contents);
        ASSERT_EQ(ReadText(bytes), contents) << bytes.toStdString();
    }
}

TEST(IniText, IsPlainAsciiInWhichNoLineIsLong) {
    EXPECT_EQ(
        IniWriter::Write({{QStringLiteral("k"), QStringLiteral("\u00E41\n@")},
                          {QStringLiteral("S/x y"), QStringLiteral("@a")},
                          {QStringLiteral("general/k"), QStringLiteral(" a")},
                          {QStringLiteral("S/T/k"), QStringLiteral("a,b")}}),
        QByteArray("[General]\nk=\\xe4\\x31\\n@\n\n[S]\nT\\k=\"a,b\"\nx%20y=@@a\n\n[%general]\nk=\" a\"\n"));
}

#ifndef Q_OS_WIN  // where the other reader does not tell upper case from lower case
/// What QSettings reads and writes in files that it has not seen before.
class BesideQSettings : public testing::Test {
  protected:
    QString NextFile() { return m_directory.filePath(QStringLiteral("%1.ini").arg(++m_files)); }
    QByteArray Written(const CfgContents& contents) {
        const QString name = NextFile();
        {
            QSettings settings(name, QSettings::IniFormat);
            for (const auto& [key, content] : contents)
                settings.setValue(key, content);
        }
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    CfgContents Read(const QByteArray& bytes) {
        const QString name = NextFile();
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        file.close();
        QSettings settings(name, QSettings::IniFormat);
        settings.setIniCodec(QTextCodec::codecForName("UTF-8"));
        CfgContents contents;
        for (const QString& key : settings.allKeys())
            contents[key] = settings.value(key).toString();
        return contents;
    }

  private:
    QTemporaryDir m_directory;
    int m_files = 0;
};

TEST_F(BesideQSettings, TheSameIsWrittenAndRead) {
    QRandomGenerator random(12);
    for (int round = 0; round < 50; ++round) {
        const CfgContents contents = RandomContents(random, 100);
        const QByteArray bytes = IniWriter::Write(contents);
        ASSERT_EQ(Written(contents).toStdString(), bytes.toStdString());
        ASSERT_EQ(Read(bytes), contents) << bytes.toStdString();
    }
}
#endif

}  // namespace
