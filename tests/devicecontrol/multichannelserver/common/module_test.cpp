// SPDX-License-Identifier: Apache-2.0
// The library as the application framework loads it: from its file, by the names of its two entries. This
// program does not link it.
#include <platform/app/idllinstance.h>
#include <platform/app/translationcenter.h>

#include <tests/support/allocationcounter.h>

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLibrary>

#include <memory>

namespace {

class ModuleTest : public testing::Test {
  protected:
    using Create = IDllInstance* (*)(const wchar_t*);
    using Destroy = void (*)(IDllInstance*);

    void SetUp() override {
        ASSERT_TRUE(m_library.load()) << m_library.errorString().toStdString();
        m_create = reinterpret_cast<Create>(m_library.resolve("ARCreateEx"));
        m_destroy = reinterpret_cast<Destroy>(m_library.resolve("ARDestroy"));
        ASSERT_NE(m_create, nullptr);
        ASSERT_NE(m_destroy, nullptr);
        m_center.SetSearchDirectories({QStringLiteral(CATALOGUE_DIR)});
        m_center.SetLocale(QLocale(QLocale::German, QLocale::Germany));
    }
    ~ModuleTest() override { m_center.SetSearchDirectories(QStringList()); }

    static QString Title() { return QCoreApplication::translate("ModuleTest", "Title"); }

    QLibrary m_library{QStringLiteral(MODULE)};
    Create m_create = nullptr;
    Destroy m_destroy = nullptr;
    TranslationCenter& m_center = TranslationCenter::Instance();
};

TEST_F(ModuleTest, AnInstanceKnowsItsArgument) {
    IDllInstance* const instance = m_create(L"-argument \x00fc\x20ac");
    ASSERT_NE(instance, nullptr);
    EXPECT_EQ(instance->GetArgument(), QString::fromUtf8("-argument ü€"));
    m_destroy(instance);
}

TEST_F(ModuleTest, TheArgumentMayBeEmptyOrMissing) {
    for (const wchar_t* const argument : {L"", static_cast<const wchar_t*>(nullptr)}) {
        IDllInstance* const instance = m_create(argument);
        ASSERT_NE(instance, nullptr);
        EXPECT_EQ(instance->GetArgument(), QString());
        m_destroy(instance);
    }
}

TEST_F(ModuleTest, DestroyingNothingDoesNothing) {
    m_destroy(nullptr);
    EXPECT_EQ(Title(), QStringLiteral("Title"));
}

TEST_F(ModuleTest, WhileAnInstanceLivesTheTextsAreTranslated) {
    EXPECT_EQ(Title(), QStringLiteral("Title"));
    IDllInstance* const first = m_create(L"");
    IDllInstance* const second = m_create(L"");
    EXPECT_EQ(Title(), QStringLiteral("Titel"));
    m_destroy(first);
    EXPECT_EQ(Title(), QStringLiteral("Titel"));
    m_destroy(second);
    EXPECT_EQ(Title(), QStringLiteral("Title"));
}

TEST_F(ModuleTest, AnInstanceGoesThroughTheStagesOfItsLife) {
    IDllInstance* const instance = m_create(L"");
    instance->OnLoaded();
    instance->CommitData();
    instance->OnUnloading();
    m_destroy(instance);
}

TEST_F(ModuleTest, WithoutMemoryThereIsNoInstance) {
    {
        const AllocationFailure failure(1);
        EXPECT_EQ(m_create(L""), nullptr);
    }
    EXPECT_EQ(Title(), QStringLiteral("Title"));
    IDllInstance* const instance = m_create(L"");
    EXPECT_NE(instance, nullptr);
    m_destroy(instance);
}

}  // namespace
