// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/twoends.h>

using namespace std::chrono_literals;

namespace {

using values::Value;
using values::ValueNumeric;
using values::ValueSelection;
using Text = Value<QString>;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

TEST_F(TwoEnds, AClientSeesWhatTheServerHas) {
    Add<ValueNumeric<int>>("/S/a", "n")->SetValue(7);
    Add<Text>("/S", "t")->SetValue(S("hello"));
    End& end = AddClient();
    IVtTic* const tic = end.client->AddTic(S("/L,/S"), "");
    ASSERT_NE(tic, nullptr);
    Settle();
    EXPECT_TRUE(end.client->IsConnected());
    EXPECT_TRUE(tic->IsEstablished());
    ASSERT_NE(Find<ValueNumeric<int>>("/L/a/n"), nullptr);
    EXPECT_EQ(Find<ValueNumeric<int>>("/L/a/n")->GetValue(), 7);
    EXPECT_EQ(Find<Text>("/L/t")->GetValue(), S("hello"));
    EXPECT_EQ(end.observer.Codes(), (std::vector<TChangeCode>{16, 15}));
}

TEST_F(TwoEnds, ChangesRunBothWays) {
    auto* const n = Add<ValueNumeric<int>>("/S", "n");
    End& end = AddClient();
    end.client->AddTic(S("/L,/S"), "");
    Settle();
    n->SetValue(5);
    Settle();
    auto* const mirrored = Find<ValueNumeric<int>>("/L/n");
    EXPECT_EQ(mirrored->GetValue(), 5);
    mirrored->SetValue(6);
    EXPECT_TRUE(end.client->HasUnansweredWrites());
    Settle();
    EXPECT_EQ(n->GetValue(), 6);
    EXPECT_FALSE(end.client->HasUnansweredWrites());
    EXPECT_EQ(end.observer.Count(20), 1);
    n->SetMax(4);
    Settle();
    EXPECT_EQ(mirrored->GetMax(), 4);
    EXPECT_EQ(mirrored->GetValue(), 4);
    mirrored->SetValue(9);
    Settle();
    EXPECT_EQ(n->GetValue(), 4);
    EXPECT_EQ(mirrored->GetValue(), 4);
}

TEST_F(TwoEnds, AfterALossItemsTurnStaleAndComeBackInPlace) {
    auto* const n = Add<ValueNumeric<int>>("/S", "n");
    Add<Text>("/S", "gone");
    End& end = AddClient();
    end.client->AddTic(S("/L,/S"), "");
    Settle();
    auto* const mirrored = Find<ValueNumeric<int>>("/L/n");
    end.observer.Clear();
    KillServer();
    Settle();
    EXPECT_FALSE(end.client->IsConnected());
    EXPECT_EQ(mirrored->GetState(), values::Stale);
    EXPECT_EQ(end.observer.Codes(), (std::vector<TChangeCode>{17, 15}));
    n->SetValue(9);
    m_tree.Delete(Item("/S/gone"));
    StartServer();
    Pass(200ms);
    EXPECT_TRUE(end.client->AreAllTicsEstablished());
    EXPECT_EQ(Find<ValueNumeric<int>>("/L/n"), mirrored);
    EXPECT_EQ(mirrored->GetState(), values::Valid);
    EXPECT_EQ(mirrored->GetValue(), 9);
    EXPECT_EQ(Item("/L/gone"), nullptr);
}

TEST_F(TwoEnds, ItemsComeAndGo) {
    Add<Text>("/S", "t");
    End& end = AddClient();
    end.client->AddTic(S("/L,/S"), "");
    Settle();
    Add<Text>("/S/x/y", "z")->SetValue(S("deep"));
    Settle();
    ASSERT_NE(Find<Text>("/L/x/y/z"), nullptr);
    EXPECT_EQ(Find<Text>("/L/x/y/z")->GetValue(), S("deep"));
    m_tree.Delete(Item("/S/x"));
    Settle();
    EXPECT_EQ(Item("/L/x"), nullptr);
    m_tree.Delete(Item("/S"));
    Settle();
    EXPECT_EQ(Item("/L"), nullptr);
    EXPECT_FALSE(end.client->AreAllTicsEstablished());
    Add<Text>("/S", "again");
    Settle();
    EXPECT_NE(Item("/L/again"), nullptr);
    EXPECT_TRUE(end.client->AreAllTicsEstablished());
}

TEST_F(TwoEnds, WhatAClientCreatesIsOfferedToTheServer) {
    Add<Text>("/S", "t");
    End& end = AddClient();
    end.client->AddTic(S("/L,/S"), "");
    Settle();
    Add<Text>("/L/own", "note")->SetValue(S("mine"));
    Settle();
    ASSERT_NE(Find<Text>("/S/own/note"), nullptr);
    EXPECT_EQ(Find<Text>("/S/own/note")->GetValue(), S("mine"));
    Find<Text>("/S/own/note")->SetValue(S("yours"));
    Settle();
    EXPECT_EQ(Find<Text>("/L/own/note")->GetValue(), S("yours"));
}

/// A server that makes a device whenever a client wants its node, as devices are: with values of their own.
class DevicesOnDemand : public TwoEnds {
  protected:
    DevicesOnDemand() {
        Add<Text>("/S", "t");
        m_access.onProvide = [this](const QString& path) {
            if (path != S("/S/dev") || Item("/S/dev") != nullptr) return;
            for (const char* name : names)
                Add<Text>("/S/dev/status", name)->SetValue(S(name));
        };
        client = AddClient().client.get();
        client->AddTic(S("/L,/S"), "");
        Settle();
        m_tree.ProvideNode(S("/L/dev"));
        Settle();
    }
    void RestartServer() {
        KillServer();
        m_tree.Delete(Item("/S/dev"));
        Settle();
        StartServer();
        Pass(200ms);
        EXPECT_TRUE(client->AreAllTicsEstablished());
    }

    std::vector<const char*> names{"mode", "speed"};
    vt::VtClient* client = nullptr;
};

TEST_F(DevicesOnDemand, ComeBackInPlaceAfterTheServerHasLostThem) {
    auto* const mode = Find<Text>("/L/dev/status/mode");
    ASSERT_NE(mode, nullptr);
    RecordingObserver states;
    mode->AddObserver(&states);
    RestartServer();
    EXPECT_EQ(Item("/L/dev/status/mode"), mode);
    EXPECT_EQ(mode->GetState(), values::Valid);
    EXPECT_EQ(states.Codes(), (std::vector<TChangeCode>{2, 2})) << "stale, and valid again";
    Find<Text>("/S/dev/status/mode")->SetValue(S("on"));
    Settle();
    EXPECT_EQ(mode->GetValue(), S("on"));
    mode->SetValue(S("off"));
    Settle();
    EXPECT_EQ(Find<Text>("/S/dev/status/mode")->GetValue(), S("off"));
    RestartServer();
    EXPECT_EQ(Item("/L/dev/status/mode"), mode) << "a second time";
    mode->DeleteObserver(&states);
}

TEST_F(DevicesOnDemand, LoseWhatTheServerDoesNotMakeAnew) {
    names = {"mode"};
    RestartServer();
    EXPECT_NE(Item("/L/dev/status/mode"), nullptr);
    EXPECT_EQ(Item("/L/dev/status/speed"), nullptr);
}

TEST_F(DevicesOnDemand, LoseAllThatIsRefusedAnew) {
    m_access.onProvide = nullptr;
    m_access.uncreatable.insert(S("/S/dev"));
    RestartServer();
    EXPECT_NE(Item("/L/dev"), nullptr) << "what the application made stays";
    EXPECT_EQ(Item("/L/dev/status"), nullptr);
}

}  // namespace
