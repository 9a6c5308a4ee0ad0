// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcslogdisplay.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistdisplay.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistmodel.h>
#include <devicecontrol/multichannelserver/common/windowplacement.h>

#include <tests/devicecontrol/multichannelserver/common/slots_itanium.h>

#include <gtest/gtest.h>

namespace {

/// Show what is meant for derived classes.
struct AnObject : QObject {
    using QObject::disconnectNotify;  // the last of an object's own
};
struct AWidget : QWidget {
    using QWidget::focusNextPrevChild;  // the last of a widget's own
};
struct ALogDisplay : MCSLogDisplay {
    using MCSLogDisplay::Build;
};

using slots::ConstOp;
using slots::ExpectOneAfterTheOther;
using slots::Op;
using slots::Slot;

std::size_t SlotAfterTheWidgets() {
    return Slot<Op<QWidget, bool, bool>>(&AWidget::focusNextPrevChild) + 1;
}

// clang-format off
TEST(VirtualOrder, OfTheLogDisplayAfterTheWidgets) {
    using D = MCSLogDisplay;
    ExpectOneAfterTheOther(SlotAfterTheWidgets(), {
        {"SetLogMessage_ValuePath", Slot<Op<D, bool, const QString&>>(&D::SetLogMessage_ValuePath)},
        {"SetMaxMessages",          Slot<Op<D, void, int>>(&D::SetMaxMessages)},
        {"SlotClear",               Slot<Op<D, void>>(&D::SlotClear)},
        {"SlotSaveLog",             Slot<Op<D, void>>(&D::SlotSaveLog)},
        {"SlotSaveLogToFile",       Slot<Op<D, void, QString>>(&D::SlotSaveLogToFile)},
        {"Build",                   Slot<Op<D, void>>(&ALogDisplay::Build)}});
}

TEST(VirtualOrder, OfTheStatusListDisplayAfterTheWidgets) {
    using D = MCSMpxORVStatusListDisplay;
    ExpectOneAfterTheOther(SlotAfterTheWidgets(), {
        {"AddMpxORVs_ValuePath",           Slot<Op<D, bool, const QString&>>(&D::AddMpxORVs_ValuePath)},
        {"RemoveAllMpxORVs_ValuePaths",    Slot<Op<D, void>>(&D::RemoveAllMpxORVs_ValuePaths)},
        {"SetMaySeeFullStatusInformation", Slot<Op<D, void, bool>>(&D::SetMaySeeFullStatusInformation)}});
}

TEST(VirtualOrder, OfTheStatusListModelAfterTheTableModels) {
    using M = MCSMpxORVStatusListModel;
    using Flags = ConstOp<QAbstractItemModel, Qt::ItemFlags, const QModelIndex&>;
    const std::size_t first = Slot<Op<M, bool, const QString&>>(&M::addMpxORVs_ValuePath);
    EXPECT_GT(first, Slot<Flags>(&QAbstractItemModel::flags));
    ExpectOneAfterTheOther(first, {
        {"addMpxORVs_ValuePath",        first},
        {"removeAllMpxORVs_ValuePaths", Slot<Op<M, void>>(&M::removeAllMpxORVs_ValuePaths)}});
}

TEST(VirtualOrder, OfAPlacementAfterTheObjects) {
    using P = WindowPlacement;
    using Disconnected = Op<QObject, void, const QMetaMethod&>;
    ExpectOneAfterTheOther(Slot<Disconnected>(&AnObject::disconnectNotify) + 1, {
        {"Store",   Slot<Op<P, void>>(&P::Store)},
        {"Restore", Slot<Op<P, void>>(&P::Restore)}});
    using Owner = values::PersistantOwner;
    EXPECT_EQ(Slot(&Owner::ApplyPersistantAfterRead), Slot(&Owner::ApplyPersistantBeforeWrite) + 1);
}
// clang-format on

}  // namespace
