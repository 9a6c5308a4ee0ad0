// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/mpxorv/mpxorvpath.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

QString MpxOrvPath::BasePath(EMpxOrvKind kind) {
    return mcskeys::DefaultBasePath(kind == EMpxOrvKind::Static ? mcskeys::StaticMpxORVs
                                                                : mcskeys::DynamicMpxORVs);
}

QString MpxOrvPath::NodePath(EMpxOrvKind kind, const QString& name) {
    return BasePath(kind) + QLatin1Char('/') + name;
}

std::optional<MpxOrvPath> MpxOrvPath::Parse(const QString& path) {
    for (const EMpxOrvKind kind : {EMpxOrvKind::Static, EMpxOrvKind::Dynamic}) {
        const QString base = BasePath(kind) + QLatin1Char('/');
        if (!path.startsWith(base)) continue;
        QStringList names = path.mid(base.size()).split(QLatin1Char('/'));
        const QString name = names.takeFirst();
        return MpxOrvPath{kind, name, names};
    }
    return std::nullopt;
}
