// SPDX-License-Identifier: Apache-2.0
#pragma once

class ICfg;
class QTabWidget;
class Tuning;

/// What an operator arranges, kept in the configuration: the page that was seen last, the columns of tables
/// and the places of splitters, each under its object name, and the step of frequencies. GUI thread.
namespace keptview {

/// What is not there, or does not fit any more, leaves all as it is.
void Restore(ICfg& cfg, QTabWidget& pages, Tuning& tuning);
void Keep(ICfg& cfg, const QTabWidget& pages, const Tuning& tuning);

}  // namespace keptview
