// SPDX-License-Identifier: Apache-2.0
#include <platform/app/idllinstance.h>

#include <tests/support/printing.h>

#include <gmock/gmock.h>

#include <QtCore/QStringList>

#include <memory>

namespace {

class RecordingModule final : public IDllInstance {
  public:
    RecordingModule(const QString& argument, QStringList* calls) : IDllInstance(argument), m_calls(calls) {}
    ~RecordingModule() override { m_calls->append(QStringLiteral("destroyed")); }

    void OnLoaded() override { m_calls->append(QStringLiteral("loaded")); }
    void OnUnloading() override { m_calls->append(QStringLiteral("unloading")); }
    void CommitData() override { m_calls->append(QStringLiteral("commit")); }

  private:
    QStringList* m_calls;
};

TEST(IDllInstance, KeepsTheArgumentItWasLoadedWith) {
    EXPECT_EQ(IDllInstance(QStringLiteral("port=1 größe")).GetArgument(), QStringLiteral("port=1 größe"));
    EXPECT_TRUE(IDllInstance(QString()).GetArgument().isEmpty());
}

TEST(IDllInstance, DoesNothingUnlessOverridden) {
    IDllInstance module(QStringLiteral("a"));
    module.OnLoaded();
    module.OnUnloading();
    module.CommitData();
    EXPECT_EQ(module.GetArgument(), QStringLiteral("a"));
}

TEST(IDllInstance, IsToldAndDestroyedThroughItsBase) {
    QStringList calls;
    std::unique_ptr<IDllInstance> module = std::make_unique<RecordingModule>(QStringLiteral("a"), &calls);
    module->OnLoaded();
    module->CommitData();
    module->OnUnloading();
    EXPECT_EQ(module->GetArgument(), QStringLiteral("a"));
    module.reset();
    EXPECT_THAT(calls, testing::ElementsAre(QStringLiteral("loaded"), QStringLiteral("commit"),
                                            QStringLiteral("unloading"), QStringLiteral("destroyed")));
}

}  // namespace
