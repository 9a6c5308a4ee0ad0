// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Lets this process run Qt's own event dispatcher and not GLib's, which does more for each turn of the event
/// loop than a program of sockets needs. For programs without a window: what serves those may rely on GLib.
/// Before the application object is made; systems without GLib run Qt's own anyway.
void UseQtEventDispatcher();
