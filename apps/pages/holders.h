// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <functional>
#include <vector>

/// What MpxORVs have at this moment, to tell who loses what. Main thread.
namespace holders {

struct Holder {
    QString name;
    QString does;     ///< as the server says, such as "FFM 121.5 MHz"
    QString tunedTo;  ///< " (121.500 MHz)", to stand behind its name; empty if it is not
    bool isMaster = false;
    bool isWatching = false;  ///< reads its frequency from the range of the master
    bool isIdle = true;
};

/// The MpxORV whose node is at \a path.
Holder At(const QString& path);
/// The path of the server's tree in which the MpxORV at \a path is.
QString TreeOf(const QString& path);
/// Of all MpxORVs in the server's tree at \a basePath, static ones first, those that \a isMeant says yes to.
std::vector<Holder> Find(const QString& basePath, const std::function<bool(const Holder&)>& isMeant);
/// "Tower (FFM 121.5 MHz), Van 1 (FFM 98.5 MHz)", at most some of them.
QString ToText(const std::vector<Holder>& holders);
/// A sentence on who reads a frequency from the range of the master and loses it with that; empty if nobody
/// does.
QString LossOfWatchers(const QString& basePath);

}  // namespace holders
