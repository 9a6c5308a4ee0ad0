// SPDX-License-Identifier: Apache-2.0
#pragma once

class ICfg;
class QTabWidget;

/// What a person arranges in a window, kept in the configuration: the page that was seen last, the columns of
/// tables and the places of splitters, each under its object name. GUI thread.
namespace keptview {

/// What is not there, or does not fit any more, leaves all as it is.
void Restore(ICfg& cfg, QTabWidget& pages);
void Keep(ICfg& cfg, const QTabWidget& pages);

/// Where all that is kept, with what else belongs to the look of a window.
inline constexpr char SectionName[] = "View";

}  // namespace keptview
