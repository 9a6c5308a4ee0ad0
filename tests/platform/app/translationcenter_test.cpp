// SPDX-License-Identifier: Apache-2.0
#include <platform/app/translationcenter.h>

#include <tests/support/programrunner.h>

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace {

const QString Greetings = QStringLiteral("greetings");
const QString Farewells = QStringLiteral("farewells");
const QString Catalogues = QStringLiteral(CATALOGUE_DIR);

QString Greeting() {
    return QCoreApplication::translate("Greetings", "Good day");
}

QString Farewell() {
    return QCoreApplication::translate("Farewells", "Good bye");
}

/// The one center outlives the tests. What they register they take back.
class TranslationCenterTest : public testing::Test {
  protected:
    TranslationCenterTest() {
        m_center.SetSearchDirectories({Catalogues});
        m_center.SetLocale(QLocale(QLocale::German, QLocale::Germany));
    }
    ~TranslationCenterTest() override {
        for (const QString& name : m_registered)
            m_center.Unregister(name);
        m_center.SetSearchDirectories(QStringList());
    }

    bool Register(const QString& name) {
        m_registered.append(name);
        return m_center.Register(name);
    }
    void Unregister(const QString& name) {
        m_registered.removeOne(name);
        m_center.Unregister(name);
    }
    void SetLocale(const char* name) { m_center.SetLocale(QLocale(QString::fromLatin1(name))); }

    TranslationCenter& m_center = TranslationCenter::Instance();
    QStringList m_registered;
};

TEST_F(TranslationCenterTest, ARegisteredCatalogueTranslates) {
    EXPECT_EQ(Greeting(), QStringLiteral("Good day"));
    EXPECT_TRUE(Register(Greetings));
    EXPECT_EQ(Greeting(), QStringLiteral("Guten Tag"));
    EXPECT_EQ(Farewell(), QStringLiteral("Good bye"));
    EXPECT_TRUE(Register(Farewells));
    EXPECT_EQ(Greeting(), QStringLiteral("Guten Tag"));
    EXPECT_EQ(Farewell(), QStringLiteral("Tschüss"));
}

TEST_F(TranslationCenterTest, ACatalogueLeavesWithItsLastRegistration) {
    EXPECT_TRUE(Register(Greetings));
    EXPECT_TRUE(Register(Greetings));
    Unregister(Greetings);
    EXPECT_EQ(Greeting(), QStringLiteral("Guten Tag"));
    Unregister(Greetings);
    EXPECT_EQ(Greeting(), QStringLiteral("Good day"));
    EXPECT_TRUE(Register(Greetings));
    EXPECT_EQ(Greeting(), QStringLiteral("Guten Tag"));
}

TEST_F(TranslationCenterTest, UnregisteringMoreOftenThanRegisteringIsHarmless) {
    m_center.Unregister(QStringLiteral("never registered"));
    m_center.Unregister(Greetings);
    EXPECT_TRUE(Register(Greetings));
    EXPECT_EQ(Greeting(), QStringLiteral("Guten Tag"));
}

TEST_F(TranslationCenterTest, TheCountryIsPreferredToTheLanguage) {
    SetLocale("de_AT");
    EXPECT_TRUE(Register(Farewells));
    EXPECT_EQ(Farewell(), QStringLiteral("Pfiat di"));
}

TEST_F(TranslationCenterTest, TheLanguageIsUsedWhereTheCountryHasNoCatalogue) {
    SetLocale("de_AT");
    EXPECT_TRUE(Register(Greetings));
    EXPECT_EQ(Greeting(), QStringLiteral("Guten Tag"));
    SetLocale("de_CH");
    EXPECT_TRUE(Register(Farewells));
    EXPECT_EQ(Farewell(), QStringLiteral("Tschüss"));
}

TEST_F(TranslationCenterTest, AnotherLanguageFindsNoCatalogue) {
    SetLocale("fr_FR");
    EXPECT_FALSE(Register(Greetings));
    EXPECT_EQ(Greeting(), QStringLiteral("Good day"));
}

TEST_F(TranslationCenterTest, TheLocaleCountsForLaterRegistrationsOnly) {
    EXPECT_TRUE(Register(Farewells));
    SetLocale("de_AT");
    EXPECT_TRUE(Register(Farewells));
    EXPECT_EQ(Farewell(), QStringLiteral("Tschüss"));
    Unregister(Farewells);
    Unregister(Farewells);
    EXPECT_TRUE(Register(Farewells));
    EXPECT_EQ(Farewell(), QStringLiteral("Pfiat di"));
}

TEST_F(TranslationCenterTest, AnAbsentCatalogueIsLookedForAgainWithTheNextRegistration) {
    m_center.SetSearchDirectories(QStringList());
    EXPECT_FALSE(Register(Greetings));
    EXPECT_EQ(Greeting(), QStringLiteral("Good day"));
    m_center.SetSearchDirectories({Catalogues});
    EXPECT_TRUE(Register(Greetings));
    EXPECT_EQ(Greeting(), QStringLiteral("Guten Tag"));
    Unregister(Greetings);  // the first one counted
    EXPECT_EQ(Greeting(), QStringLiteral("Guten Tag"));
}

TEST_F(TranslationCenterTest, TheFirstDirectoryThatHasTheCatalogueIsUsed) {
    const QTemporaryDir first;
    ASSERT_TRUE(QFile::copy(Catalogues + QStringLiteral("/farewells_de_AT.qm"),
                            first.filePath(QStringLiteral("farewells_de.qm"))));
    m_center.SetSearchDirectories({QStringLiteral("/nowhere"), first.path(), Catalogues});
    EXPECT_TRUE(Register(Farewells));
    EXPECT_TRUE(Register(Greetings));
    EXPECT_EQ(Farewell(), QStringLiteral("Pfiat di"));
    EXPECT_EQ(Greeting(), QStringLiteral("Guten Tag"));
}

TEST_F(TranslationCenterTest, ACatalogueThatIsNoneIsPassedOver) {
    const QTemporaryDir first;
    QFile file(first.filePath(QStringLiteral("greetings_de.qm")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no catalogue");
    file.close();
    m_center.SetSearchDirectories({first.path()});
    EXPECT_FALSE(Register(Greetings));
    m_center.SetSearchDirectories({first.path(), Catalogues});
    EXPECT_TRUE(Register(Greetings));
    EXPECT_EQ(Greeting(), QStringLiteral("Guten Tag"));
}

TEST_F(TranslationCenterTest, TheApplicationsOwnDirectoryIsTheLast) {
    const QString name = QStringLiteral("greetings%1").arg(QCoreApplication::applicationPid());
    const QString directory = QCoreApplication::applicationDirPath() + QStringLiteral("/translations");
    const bool wasThere = QDir(directory).exists();
    ASSERT_TRUE(QDir().mkpath(directory));
    const QString file = QStringLiteral("%1/%2_de.qm").arg(directory, name);
    ASSERT_TRUE(QFile::copy(Catalogues + QStringLiteral("/greetings_de.qm"), file));
    m_center.SetSearchDirectories(QStringList());
    EXPECT_TRUE(Register(name));
    EXPECT_EQ(Greeting(), QStringLiteral("Guten Tag"));
    EXPECT_TRUE(QFile::remove(file));
    if (!wasThere) QDir().rmdir(directory);
}

TEST_F(TranslationCenterTest, TheDefaultLocaleOfTheMomentIsUsedUnlessOneIsSet) {
    const ProgramOutcome outcome = ProgramRunner::Run(QStringLiteral(GREETER), {Catalogues, Greetings});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.output, QByteArray("Good day, Guten Tag"));
}

}  // namespace
