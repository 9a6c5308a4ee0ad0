// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>

/// How an input of a data module looks in tables, by what is known of its transmitter. GUI thread.
namespace lamplook {

enum class ELamp {
    Keyed,
    Silent,
    Unsupervised,  ///< nobody would notice a transmitter at its frequency
    Unknown
};
constexpr ELamp All[] = {ELamp::Keyed, ELamp::Silent, ELamp::Unsupervised, ELamp::Unknown};

QString Text(ELamp lamp);
/// Colour and font of that text; nothing for other roles.
QVariant Look(ELamp lamp, int role);

}  // namespace lamplook
