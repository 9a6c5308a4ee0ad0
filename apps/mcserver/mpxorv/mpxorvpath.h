// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

enum class EMpxOrvKind { Static, Dynamic };

/// Where MpxORVs are in the tree: what a path below "DynamicMpxORVs" or "StaticMpxORVs" means.
struct MpxOrvPath {
    EMpxOrvKind kind = EMpxOrvKind::Dynamic;
    QString name;
    QStringList below;  ///< names of what is meant below the MpxORV's node; empty: the node itself

    /// None for a path that is not at or below the node of an MpxORV. \a path is absolute and normalised.
    static std::optional<MpxOrvPath> Parse(const QString& path);

    /// The node below which the MpxORVs of a kind are.
    static QString BasePath(EMpxOrvKind kind);
    static QString NodePath(EMpxOrvKind kind, const QString& name);
};
