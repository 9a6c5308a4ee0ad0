// SPDX-License-Identifier: Apache-2.0
// Marked, and to be found nowhere: the check must find it.
class MCS_MODBUS_EXPORT GoneClass;
