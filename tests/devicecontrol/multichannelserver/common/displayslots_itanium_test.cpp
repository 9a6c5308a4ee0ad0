// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcscommandsdisplay.h>
#include <devicecontrol/multichannelserver/common/mcsconfigdisplay.h>
#include <devicecontrol/multichannelserver/common/mcsstatusdisplay.h>

#include <platform/values/tree.h>

#include <tests/devicecontrol/multichannelserver/common/slots_itanium.h>

#include <gtest/gtest.h>

namespace {

/// Show what is meant for derived classes.
struct AWidget : QWidget {
    using QWidget::focusNextPrevChild;  // the last of a widget's own
};
struct AStatusDisplay : MCSStatusDisplay {
    using MCSStatusDisplay::Build;
    using MCSStatusDisplay::UpdateFreqChannelsDisp;
    using MCSStatusDisplay::UpdateJobTypeDisp;
    using MCSStatusDisplay::UpdateNoValues;
    using MCSStatusDisplay::UpdateNumberOfORVsDisplay;
    using MCSStatusDisplay::UpdateOnlineDisp;
    using MCSStatusDisplay::UpdateSweepTimeDisp;
};
struct AConfigDisplay : MCSConfigDisplay {
    using MCSConfigDisplay::Build;
    using MCSConfigDisplay::BuildBootConfigGroup;
    using MCSConfigDisplay::BuildJobConfigGroup;
};
struct ACommandsDisplay : MCSCommandsDisplay {
    using MCSCommandsDisplay::Build;
};

using slots::ConstOp;
using slots::ExpectOneAfterTheOther;
using slots::Op;
using slots::Slot;

std::size_t SlotAfterTheWidgets() {
    return Slot<Op<QWidget, bool, bool>>(&AWidget::focusNextPrevChild) + 1;
}

// clang-format off
TEST(VirtualOrder, OfTheStatusDisplayAfterTheWidgets) {
    using D = MCSStatusDisplay;
    using Update = Op<D, void>;
    ExpectOneAfterTheOther(SlotAfterTheWidgets(), {
        {"SetStatus_ValuePath",       Slot<Op<D, bool, const QString&>>(&D::SetStatus_ValuePath)},
        {"Build",                     Slot<Update>(&AStatusDisplay::Build)},
        {"UpdateOnlineDisp",          Slot<Update>(&AStatusDisplay::UpdateOnlineDisp)},
        {"UpdateFreqChannelsDisp",    Slot<Update>(&AStatusDisplay::UpdateFreqChannelsDisp)},
        {"UpdateJobTypeDisp",         Slot<Update>(&AStatusDisplay::UpdateJobTypeDisp)},
        {"UpdateNumberOfORVsDisplay", Slot<Update>(&AStatusDisplay::UpdateNumberOfORVsDisplay)},
        {"UpdateSweepTimeDisp",       Slot<Update>(&AStatusDisplay::UpdateSweepTimeDisp)},
        {"UpdateNoValues",            Slot<Update>(&AStatusDisplay::UpdateNoValues)}});
}

TEST(VirtualOrder, OfTheConfigurationDisplayAfterTheWidgets) {
    using D = MCSConfigDisplay;
    ExpectOneAfterTheOther(SlotAfterTheWidgets(), {
        {"GetFlags",              Slot<ConstOp<D, D::Flags>>(&D::GetFlags)},
        {"SetFlags",              Slot<Op<D, void, D::Flags>>(&D::SetFlags)},
        {"SetConfig_ValuePath",   Slot<Op<D, bool, const QString&>>(&D::SetConfig_ValuePath)},
        {"EnableBootConfigGroup", Slot<Op<D, void, bool>>(&D::EnableBootConfigGroup)},
        {"EnableJobConfigGroup",  Slot<Op<D, void, bool>>(&D::EnableJobConfigGroup)},
        {"SetDeviceType",         Slot<Op<D, void, long>>(&D::SetDeviceType)},
        {"Build",                 Slot<Op<D, void>>(&AConfigDisplay::Build)},
        {"BuildBootConfigGroup",  Slot<Op<D, void, QWidget*>>(&AConfigDisplay::BuildBootConfigGroup)},
        {"BuildJobConfigGroup",   Slot<Op<D, void, QWidget*>>(&AConfigDisplay::BuildJobConfigGroup)}});
}

TEST(VirtualOrder, OfTheCommandsDisplayAfterTheWidgets) {
    using D = MCSCommandsDisplay;
    ExpectOneAfterTheOther(SlotAfterTheWidgets(), {
        {"SetCommands_ValuePath", Slot<Op<D, bool, const QString&>>(&D::SetCommands_ValuePath)},
        {"Build",                 Slot<Op<D, void>>(&ACommandsDisplay::Build)}});
}
// clang-format on

TEST(VirtualOrder, TheFirstBaseOfTheStatusDisplayIsTheWidget) {
    const values::Tree tree;
    MCSStatusDisplay display;
    EXPECT_EQ(static_cast<void*>(static_cast<QWidget*>(&display)), static_cast<void*>(&display));
    EXPECT_EQ(reinterpret_cast<char*>(static_cast<IObserver*>(&display)) - reinterpret_cast<char*>(&display),
              static_cast<std::ptrdiff_t>(sizeof(QWidget)));
}

}  // namespace
