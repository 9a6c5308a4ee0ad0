// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/mcscommands.h>
#include <devicecontrol/multichannelserver/common/mcsconfigdata.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatus.h>
#include <devicecontrol/multichannelserver/common/mcsstatus.h>

#include <QtCore/QString>

#include <memory>

/// Data objects of every class, made at one place, for tests of what they have in common.
namespace anydataobject {

/// A data object, whichever, behind its destructor.
using Object = std::shared_ptr<void>;

inline QString BasePath() {
    return QStringLiteral("/Base");
}

inline Object MakeConfigData() {
    const QString path = BasePath();
    return std::make_shared<MCSConfigData>(&path, false);
}
inline Object MakeCommands() {
    const QString path = BasePath();
    return std::make_shared<MCSCommands>(&path);
}
inline Object MakeStatus() {
    return std::make_shared<MCSStatus>(BasePath());
}
inline Object MakeMpxORVStatus() {
    return std::make_shared<MCSMpxORVStatus>(BasePath());
}

}  // namespace anydataobject
