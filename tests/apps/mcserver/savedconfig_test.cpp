// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/peertext.h>

#include <tests/apps/mcserver/serverfixture.h>

using namespace std::chrono_literals;

namespace {

/// What the status tells of the configuration in the file.
class SavedConfigTest : public ServerTest {
  protected:
    static QString Saved(const char* key) {
        return QStringLiteral("/MultiChannelServer/Status/SavedConfig/") + QLatin1String(key);
    }
    static QString Config(const char* key) {
        return QStringLiteral("/MultiChannelServer/Config/") + QLatin1String(key);
    }
    static int SavedCount() {
        return values::FindValue<values::Value<int>>(Saved("NumberOfFreqChannels"), nullptr, nullptr)
            ->GetValue();
    }
    template <class V, class T>
    static void Change(const char* key, const T& content) {
        values::FindValue<V>(Config(key), nullptr, nullptr)->SetValue(content);
    }
};

TEST_F(SavedConfigTest, AtFirstItIsWhatWasRead) {
    Configure("DeviceName=Tower\nNumberOfFreqChannels=3\n");
    Start();
    EXPECT_EQ(Text(Saved("DeviceName")), QStringLiteral("Tower"));
    EXPECT_EQ(SavedCount(), 3);
    EXPECT_EQ(Text(Saved("Since")), QString());
    EXPECT_EQ(Text(Saved("By")), QString());
}

TEST_F(SavedConfigTest, AChangeIsNotSavedUntilSomebodySavesIt) {
    KeepInFile();
    Start();
    const VtPeer peer = Connect(QStringLiteral("Console"));
    Change<values::Value<QString>>("DeviceName", QStringLiteral("Mast"));
    Change<values::Value<bool>>("ForceConnect", true);
    Change<values::ValueNumeric<int>>("NumberOfFreqChannels", 7);
    EXPECT_NE(Text(Saved("DeviceName")), QStringLiteral("Mast"));
    EXPECT_FALSE(Flag(Saved("ForceConnect")));
    EXPECT_EQ((Write<values::Value<bool>>(peer, Config("SaveConfig"), true)), QString());
    EXPECT_EQ(Text(Saved("DeviceName")), QStringLiteral("Mast"));
    EXPECT_TRUE(Flag(Saved("ForceConnect")));
    EXPECT_EQ(SavedCount(), 7);
    EXPECT_EQ(Text(Saved("Since")), QStringLiteral("2026-11-22T14:03:22.500Z"));
    EXPECT_EQ(Text(Saved("By")), peertext::Name(peer));
}

TEST_F(SavedConfigTest, NobodyWritesIt) {
    Start();
    const VtPeer peer = Connect(QStringLiteral("Console"));
    EXPECT_FALSE(m_access->MayWrite(peer, Saved("DeviceName"), nullptr));
}

}  // namespace
