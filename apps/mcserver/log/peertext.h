// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/codedtext.h>

#include <platform/vtclient/ivtaccess.h>

#include <QtCore/QString>

/// Texts that peers chose, as they may be shown: to people, in logs, in displays that take markup for markup.
namespace peertext {

constexpr int MaxLength = 80;

/// \a text in at most MaxLength characters, without control characters and angle brackets.
QString Shown(const QString& text);
/// Who \a peer is: "Receiver on DFPC1 (127.0.0.1:50000)".
QString Name(const VtPeer& peer);
/// The same, to be said in any language. People know a console by the name of its MpxORV, so \a mpxOrv comes
/// first if it is not empty: "Tower 2, Receiver on DFPC1 (127.0.0.1:50000)".
CodedText Coded(const VtPeer& peer, const QString& mpxOrv = {});

}  // namespace peertext
