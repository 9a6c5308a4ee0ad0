// SPDX-License-Identifier: Apache-2.0
// Which values the display observes, in which order, and which change updates what.
#include <devicecontrol/multichannelserver/common/mcsstatus.h>
#include <devicecontrol/multichannelserver/common/mcsstatusdisplay.h>

#include <tests/devicecontrol/multichannelserver/common/displaytest.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using displaytest::Attachments;
using displaytest::Attended;
using displaytest::Child;
using displaytest::TextOf;
using treeaccess::Text;
using Flag = values::Value<bool>;
using Number = values::ValueNumeric<int>;
using String = values::Value<QString>;
using values::ValueSelection;
using Texts = std::vector<QString>;

const QString path = Text("/MultiChannelServer/Status");

/// Notes what it is told and what it updates.
class ProbedDisplay final : public MCSStatusDisplay {
  public:
    void Update(Observable* source, TChangeCode code) override {
        auto* const item = dynamic_cast<values::TreeItem*>(source);
        notes.push_back(QString::number(code) + QLatin1Char(' ') +
                        (item != nullptr ? item->GetName() : QString()));
        MCSStatusDisplay::Update(source, code);
    }

    Texts notes;

  protected:
    void UpdateOnlineDisp() override {
        Note("Online");
        MCSStatusDisplay::UpdateOnlineDisp();
    }
    void UpdateFreqChannelsDisp() override {
        Note("Channels");
        MCSStatusDisplay::UpdateFreqChannelsDisp();
    }
    void UpdateJobTypeDisp() override {
        Note("Job");
        MCSStatusDisplay::UpdateJobTypeDisp();
    }
    void UpdateNumberOfORVsDisplay() override {
        Note("ORVs");
        MCSStatusDisplay::UpdateNumberOfORVsDisplay();
    }
    void UpdateSweepTimeDisp() override {
        Note("Sweep");
        MCSStatusDisplay::UpdateSweepTimeDisp();
    }
    void UpdateNoValues() override {
        Note("NoValues");
        MCSStatusDisplay::UpdateNoValues();
    }

  private:
    void Note(const char* text) { notes.push_back(Text(text)); }
};

/// The notes that are not on what was told, but on what was updated.
Texts UpdatesOf(const Texts& notes) {
    Texts updates;
    for (const QString& note : notes) {
        if (!note.at(0).isDigit()) updates.push_back(note);
    }
    return updates;
}

Texts Split(const char* text) {
    Texts parts;
    for (const QString& part : Text(text).split(QLatin1Char(' '), Qt::SkipEmptyParts))
        parts.push_back(part);
    return parts;
}

template <class V>
V& At(const char* key) {
    V* const value = treeaccess::ValueAt<V>(path + QLatin1Char('/') + Text(key));
    if (value == nullptr) qFatal("There is no %s", key);
    return *value;
}

class StatusDisplayBinding : public testing::Test {
  protected:
    StatusDisplayBinding() { Attachments().clear(); }

    static void PutAttended() {
        treeaccess::PutValue<Attended<ValueSelection>>(path, "BootState");
        treeaccess::PutValue<Attended<ValueSelection>>(path, "OperationMode");
        for (const char* key :
             {"FreeFreqChannels", "UsedFreqChannels", "SweepTime", "StaticMpxORVs", "DynamicMpxORVs"})
            treeaccess::PutValue<Attended<Number>>(path, key);
        treeaccess::PutValue<Attended<Flag>>(path, "McsMasterJobControlled");
        treeaccess::PutValue<Attended<Flag>>(path, "Online");
        treeaccess::PutValue<Attended<String>>(path, "ConnectionState");
        treeaccess::PutValue<Attended<String>>(path, "LogMessage");
    }
    Texts OwnAttachments() const {
        return displaytest::AttachmentsOf([this](IObserver* observer) { return observer == &m_display; });
    }

    values::Tree m_tree;
    ProbedDisplay m_display;
};

const char* const observed[] = {
    "Online",        "FreeFreqChannels", "UsedFreqChannels", "McsMasterJobControlled",
    "StaticMpxORVs", "DynamicMpxORVs",   "OperationMode",    "SweepTime"};

Texts Each(const char* what) {
    Texts texts;
    for (const char* key : observed)
        texts.push_back(Text(what) + QLatin1Char(' ') + Text(key));
    return texts;
}

TEST_F(StatusDisplayBinding, AttachesToEightValuesInOrder) {
    PutAttended();
    m_display.SetStatus_ValuePath(path);
    EXPECT_EQ(OwnAttachments(), Each("attach"));
}

TEST_F(StatusDisplayBinding, DetachesInTheSameOrder) {
    PutAttended();
    m_display.SetStatus_ValuePath(path);
    Attachments().clear();
    m_display.SetStatus_ValuePath(QString());
    EXPECT_EQ(OwnAttachments(), Each("detach"));
}

TEST_F(StatusDisplayBinding, DetachesItselfBeforeItsStatusObject) {
    PutAttended();
    m_display.SetStatus_ValuePath(path);
    Attachments().clear();
    m_display.SetStatus_ValuePath(QString());
    ASSERT_GE(Attachments().size(), 9U);
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_EQ(Attachments()[i].observer, static_cast<IObserver*>(&m_display)) << i;
    EXPECT_NE(Attachments()[8].observer, static_cast<IObserver*>(&m_display));
}

TEST_F(StatusDisplayBinding, BindsItsLabelsBeforeItObserves) {
    PutAttended();
    m_display.SetStatus_ValuePath(path);
    const IObserver* const status = Attachments()[0].observer;
    Texts expected{Text("attach ConnectionState"), Text("attach BootState"), Text("attach OperationMode")};
    for (const QString& text : Each("attach"))
        expected.push_back(text);
    const auto isNotStatus = [status](IObserver* observer) { return observer != status; };
    EXPECT_EQ(displaytest::AttachmentsOf(isNotStatus), expected);
}

TEST_F(StatusDisplayBinding, UnbindsItsLabelsAfterItsStatusObjectWent) {
    PutAttended();
    m_display.SetStatus_ValuePath(path);
    const IObserver* const status = Attachments()[0].observer;
    Attachments().clear();
    m_display.SetStatus_ValuePath(QString());
    const Texts labels = displaytest::AttachmentsOf(
        [&](IObserver* observer) { return observer != status && observer != &m_display; });
    EXPECT_EQ(labels, (Texts{Text("detach ConnectionState"), Text("detach BootState"),
                             Text("detach OperationMode")}));
    EXPECT_NE(Attachments().back().observer, status);
}

TEST_F(StatusDisplayBinding, NotifiesItselfInitiallyValueByValue) {
    Texts expected;
    for (const char* key : observed) {
        for (const char* code : {"2 ", "4 ", "7 ", "3 "}) {
            if (*code != '7' || qstrcmp(key, "OperationMode") == 0)
                expected.push_back(Text(code) + Text(key));
        }
    }
    m_tree.ProvideNode(path);
    m_display.notes.clear();
    m_display.SetStatus_ValuePath(path);
    Texts told;
    for (const QString& note : m_display.notes) {
        const bool isOfAFlag = note.contains(Text("Flag"));  // which change meanwhile
        if (note.at(0).isDigit() && !isOfAFlag) told.push_back(note);
    }
    EXPECT_EQ(told, expected);
}

TEST_F(StatusDisplayBinding, TheOnlineValueFillsEverythingFirst) {
    m_tree.ProvideNode(path);
    m_display.notes.clear();
    m_display.SetStatus_ValuePath(path);
    EXPECT_EQ(
        UpdatesOf(m_display.notes),
        Split(
            "Online Channels Job ORVs Sweep NoValues Channels Channels Job ORVs ORVs NoValues Sweep Sweep"));
}

struct DispatchRow {
    const char* key;
    const char* updates;
};

void PrintTo(const DispatchRow& row, std::ostream* stream) {
    *stream << row.key;
}

class StatusDisplayDispatch : public StatusDisplayBinding, public testing::WithParamInterface<DispatchRow> {
  protected:
    StatusDisplayDispatch() {
        m_tree.ProvideNode(path);
        m_display.SetStatus_ValuePath(path);
        m_display.notes.clear();
        auto* const item = m_tree.FindItem(path + QLatin1Char('/') + Text(GetParam().key));
        m_value = item != nullptr ? item->GetObservable() : nullptr;
    }

    Observable* m_value = nullptr;
};

TEST_P(StatusDisplayDispatch, AChangeUpdatesWhatDependsOnIt) {
    m_value->NotifyObservers(changecode::ContentChanged);
    EXPECT_EQ(UpdatesOf(m_display.notes), Split(GetParam().updates));
}

TEST_P(StatusDisplayDispatch, OtherCodesUpdateNothing) {
    for (TChangeCode code = 0; code <= 20; ++code) {
        if (code != changecode::ContentChanged) m_display.Update(m_value, code);
    }
    EXPECT_EQ(UpdatesOf(m_display.notes), Texts{});
}

TEST_P(StatusDisplayDispatch, AnUnboundDisplayUpdatesNothing) {
    m_display.SetStatus_ValuePath(QString());
    m_value->NotifyObservers(changecode::ContentChanged);
    m_display.Update(m_value, changecode::ContentChanged);
    EXPECT_EQ(UpdatesOf(m_display.notes), Texts{});
}

INSTANTIATE_TEST_SUITE_P(
    Table, StatusDisplayDispatch,
    testing::Values(DispatchRow{"Online", "Online Channels Job ORVs Sweep NoValues"},
                    DispatchRow{"FreeFreqChannels", "Channels"}, DispatchRow{"UsedFreqChannels", "Channels"},
                    DispatchRow{"McsMasterJobControlled", "Job"}, DispatchRow{"StaticMpxORVs", "ORVs"},
                    DispatchRow{"DynamicMpxORVs", "ORVs"}, DispatchRow{"OperationMode", "NoValues Sweep"},
                    DispatchRow{"SweepTime", "Sweep"}, DispatchRow{"BootState", ""},
                    DispatchRow{"ConnectionState", ""}, DispatchRow{"LogMessage", ""}),
    testing::PrintToStringParamName());

TEST_F(StatusDisplayBinding, AStrangerUpdatesNothing) {
    m_tree.ProvideNode(path);
    m_display.SetStatus_ValuePath(path);
    m_display.notes.clear();
    Observable stranger;
    m_display.Update(&stranger, changecode::ContentChanged);
    m_display.Update(nullptr, changecode::ContentChanged);
    EXPECT_EQ(UpdatesOf(m_display.notes), Texts{});
}

}  // namespace
