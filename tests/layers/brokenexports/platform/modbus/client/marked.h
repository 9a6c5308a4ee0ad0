// SPDX-License-Identifier: Apache-2.0
// Private and marked: the check must find it.
class MCS_MODBUS_EXPORT MarkedClass;
