// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/errorhandler.h>
#include <platform/values/tree.h>

#include <QtCore/QLatin1String>
#include <QtCore/QString>

/// What the client of the server, its variant at the server and their handles have in common. Only their
/// sources include it.
namespace serverclientdetail {

/// Both clients report under this path.
inline constexpr const wchar_t* SourcePath =
    L"devicecontrol/multichannelserver/common/multichannelserverclient";

inline constexpr char InvalidLocalPath[] =
    "MultiChannelServerClient::ConnectMpxORV(): invalid LocalMpxORVControlPath";
inline constexpr char InvalidRemotePath[] =
    "MultiChannelServerClient::ConnectMpxORV(): invalid RemoteMpxORVControlPath";

inline bool AreFailuresTraced() {
    return ErrorHandler::Instance().IsTraced(ErrorHandler::TraceWarnings);
}

inline void TraceFailure(const char* message, int line) {
    if (AreFailuresTraced()) _Q_Trace(QLatin1String(message), SourcePath, line);
}

/// The same for a message with one place to fill, %1.
inline void TraceFailure(const char* message, const QString& argument, int line) {
    if (AreFailuresTraced()) _Q_Trace(QString(QLatin1String(message)).arg(argument), SourcePath, line);
}

/// Null also without a tree.
inline values::Node* FindNode(const QString& path) {
    const values::Tree* const tree = values::Tree::Instance();
    return tree != nullptr ? tree->FindNode(path) : nullptr;
}

/// Deletes \a node with all that is below it. Without a tree it goes, or went, with the tree.
inline void DeleteNode(values::Node* node) {
    if (values::Tree* const tree = values::Tree::Instance()) tree->Delete(node);
}

}  // namespace serverclientdetail
