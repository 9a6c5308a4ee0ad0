// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/page.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

namespace {

QLatin1String SegmentName(EMCSControlTreeSegments segment) {
    switch (segment) {
        case CommandSegment:
            return mcskeys::Command;
        case ConfigSegment:
            return mcskeys::Config;
        case StatusSegment:
            return mcskeys::Status;
        case DynamicMpxORVsSegment:
            return mcskeys::DynamicMpxORVs;
        case StaticMpxORVsSegment:
            return mcskeys::StaticMpxORVs;
        default:
            Q_UNREACHABLE();  // one segment at a time
    }
}

}  // namespace

Page::Page(QWidget* parent) : QWidget(parent) {}

Page::~Page() = default;

QString Page::SegmentPath(const QString& basePath, EMCSControlTreeSegments segments,
                          EMCSControlTreeSegments segment) {
    if ((segments & segment) == NoSegments) return QString();
    return basePath + QLatin1Char('/') + SegmentName(segment);
}

QString Page::Below(const QString& path, QLatin1String key) {
    return path.isEmpty() ? QString() : path + QLatin1Char('/') + key;
}
