// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/modbuserror.h>

#include <modbus.h>

static_assert(modbuserror::Base == MODBUS_ENOBASE && modbuserror::InvalidAnswer == EMBBADDATA &&
                  modbuserror::UnknownException == EMBUNKEXC && modbuserror::UnaskedBytes == EMBMDATA &&
                  modbuserror::ForeignUnit == EMBBADSLAVE,
              "errors that libmodbus finds have the same codes");

namespace {

struct ErrorText {
    unsigned code;
    const char* text;
};

constexpr ErrorText Texts[] = {
    {EMBXILFUN, "Modbus exception 1: the module does not know this function"},
    {EMBXILADD, "Modbus exception 2: the module does not have these inputs"},
    {EMBXILVAL, "Modbus exception 3: the module does not accept this number of inputs"},
    {EMBXSFAIL, "Modbus exception 4: the module has failed"},
    {EMBXACK, "Modbus exception 5: the module needs more time"},
    {EMBXSBUSY, "Modbus exception 6: the module is busy"},
    {EMBXNACK, "Modbus exception 7: the module cannot do this"},
    {EMBXMEMPAR, "Modbus exception 8: the module's memory is damaged"},
    {EMBXGPATH, "Modbus exception 10: the gateway has no way to the module"},
    {EMBXGTAR, "Modbus exception 11: the module behind the gateway does not answer"},
    {modbuserror::InvalidAnswer, "The module's answer does not fit the request"},
    {modbuserror::UnknownException, "The module refuses, for an unknown reason"},
    {modbuserror::UnaskedBytes, "The module sent something that it was not asked for"},
    {modbuserror::ForeignUnit, "Another unit than the module answered"},
};

}  // namespace

unsigned modbuserror::OfException(quint8 number) {
    const unsigned code = Base + number;
    const bool isKnown = number != 0 && code <= EMBXGTAR && TextOf(code) != nullptr;
    return isKnown ? code : UnknownException;
}

const char* modbuserror::TextOf(unsigned code) {
    for (const ErrorText& entry : Texts)
        if (entry.code == code) return entry.text;
    return nullptr;
}
