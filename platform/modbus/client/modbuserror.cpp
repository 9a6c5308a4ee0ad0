// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/modbuserror.h>

using modbuserror::Base;

namespace {

constexpr quint8 LastException = 11;

struct ErrorText {
    unsigned code;
    const char* text;
};

constexpr ErrorText Texts[] = {
    {Base + 1, "Modbus exception 1: the module does not know this function"},
    {Base + 2, "Modbus exception 2: the module does not have these inputs"},
    {Base + 3, "Modbus exception 3: the module does not accept this number of inputs"},
    {Base + 4, "Modbus exception 4: the module has failed"},
    {Base + 5, "Modbus exception 5: the module needs more time"},
    {Base + 6, "Modbus exception 6: the module is busy"},
    {Base + 7, "Modbus exception 7: the module cannot do this"},
    {Base + 8, "Modbus exception 8: the module's memory is damaged"},
    {Base + 10, "Modbus exception 10: the gateway has no way to the module"},
    {Base + 11, "Modbus exception 11: the module behind the gateway does not answer"},
    {modbuserror::InvalidAnswer, "The module's answer does not fit the request"},
    {modbuserror::UnknownException, "The module refuses, for an unknown reason"},
    {modbuserror::UnaskedBytes, "The module sent something that it was not asked for"},
    {modbuserror::ForeignUnit, "Another unit than the module answered"},
};

}  // namespace

unsigned modbuserror::OfException(quint8 number) {
    const unsigned code = Base + number;
    const bool isKnown = number <= LastException && TextOf(code) != nullptr;
    return isKnown ? code : UnknownException;
}

const char* modbuserror::TextOf(unsigned code) {
    for (const ErrorText& entry : Texts)
        if (entry.code == code) return entry.text;
    return nullptr;
}
