// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/modbusaddress.h>
#include <platform/modbus/modbussystem.h>

#include <tests/support/printing.h>

#include <gmock/gmock.h>

#include <ostream>
#include <string>

namespace {

using modbussystem::EError;

struct Refused {
    const char* name;
    const wchar_t* text;
    EError error;
    const char* reason;
};

void PrintTo(const Refused& refused, std::ostream* stream) {
    *stream << refused.name;
}

class NoModbusAddress : public testing::TestWithParam<Refused> {};

TEST_P(NoModbusAddress, IsRefusedWithTheReason) {
    ModbusAddress address;
    QString reason;
    EXPECT_EQ(address.Parse(GetParam().text, &reason), modbussystem::CodeOf(GetParam().error));
    EXPECT_TRUE(reason.endsWith(QLatin1String(GetParam().reason))) << reason.toStdString();
    EXPECT_EQ(address.ip, 0u);
    EXPECT_EQ(address.port, 0);
}

constexpr const char* NoPrefix = "it does not begin with TCP:";
constexpr const char* NoName = "names are not resolved: give the IPv4 address of the module";
constexpr const char* NotFour = "an IPv4 address has four numbers";
constexpr const char* NoModule = "no module can have this address";
constexpr const char* NoPort = "a port is a number from 1 to 65535";

const Refused RefusedTexts[] = {
    {"Null", nullptr, EError::InvalidArgument, NoPrefix},
    {"Empty", L"", EError::InvalidArgument, NoPrefix},
    {"WithoutPrefix", L"192.168.0.1:502", EError::InvalidArgument, NoPrefix},
    {"OtherProtocol", L"UDP:192.168.0.1:502", EError::InvalidArgument, NoPrefix},
    {"PrefixInSmallLetters", L"tcp:192.168.0.1:502", EError::InvalidArgument, NoPrefix},
    {"PrefixOnly", L"TCP:", EError::InvalidArgument, "it has no port"},
    {"NoPort", L"TCP:192.168.0.1", EError::InvalidArgument, "it has no port"},
    {"EmptyIp", L"TCP::502", EError::NoAddress, "it has no IP address"},
    {"HostName", L"TCP:module.example:502", EError::NoAddress, NoName},
    {"Localhost", L"TCP:localhost:502", EError::NoAddress, NoName},
    {"IPv6", L"TCP:fe80::1:502", EError::NoSuchFamily, "modules have no IPv6 addresses"},
    {"IPv6InBrackets", L"TCP:[::1]:502", EError::NoSuchFamily, "modules have no IPv6 addresses"},
    {"IPv4AndAPort", L"TCP:10.0.0.1:502:502", EError::AddressNotAvailable, "the port does not belong to it"},
    {"PortTwice", L"TCP::502:502", EError::AddressNotAvailable, "the port does not belong to it"},
    {"HostNameAndAPort", L"TCP:module:502:502", EError::AddressNotAvailable,
     "the port does not belong to it"},
    {"ThreeNumbers", L"TCP:192.168.1:502", EError::AddressNotAvailable, NotFour},
    {"FiveNumbers", L"TCP:192.168.0.1.5:502", EError::AddressNotAvailable, NotFour},
    {"NumberTooLarge", L"TCP:192.168.0.256:502", EError::AddressNotAvailable,
     "'256' is no number from 0 to 255 without leading zeros"},
    {"NumberThatWouldBeOctal", L"TCP:192.168.0.010:502", EError::AddressNotAvailable,
     "'010' is no number from 0 to 255 without leading zeros"},
    {"NumberMissing", L"TCP:192.168..1:502", EError::AddressNotAvailable,
     "'' is no number from 0 to 255 without leading zeros"},
    {"BlanksWithin", L"TCP:192.168. 0.1:502", EError::NoAddress, NoName},
    {"BlanksOnly", L"TCP:  :502", EError::NoAddress, "it has no IP address"},
    {"Sign", L"TCP:192.168.0.+1:502", EError::NoAddress, NoName},
    {"Hexadecimal", L"TCP:0xC0.168.0.1:502", EError::NoAddress, NoName},
    {"ForeignDigits", L"TCP:192.168.0.\u0661:502", EError::NoAddress, NoName},
    {"ThisMachine", L"TCP:0.0.0.0:502", EError::AddressNotAvailable, NoModule},
    {"Multicast", L"TCP:224.0.0.1:502", EError::AddressNotAvailable, NoModule},
    {"Broadcast", L"TCP:255.255.255.255:502", EError::AddressNotAvailable, NoModule},
    {"PortMissing", L"TCP:192.168.0.1:", EError::InvalidArgument, NoPort},
    {"PortZero", L"TCP:192.168.0.1:0", EError::InvalidArgument, NoPort},
    {"PortTooLarge", L"TCP:192.168.0.1:65536", EError::InvalidArgument, NoPort},
    {"PortFarTooLarge", L"TCP:192.168.0.1:4294967798", EError::InvalidArgument, NoPort},
    {"PortWithTail", L"TCP:192.168.0.1:502x", EError::InvalidArgument, NoPort},
};

INSTANTIATE_TEST_SUITE_P(ModbusAddressTest, NoModbusAddress, testing::ValuesIn(RefusedTexts),
                         [](const auto& row) { return row.param.name; });

TEST(ModbusAddressTest, IsAnIpAndAPort) {
    ModbusAddress address;
    QString reason;
    EXPECT_EQ(address.Parse(L"TCP:192.168.0.17:502", &reason), 0u);
    EXPECT_EQ(address.ip, 0xC0A80011u);
    EXPECT_EQ(address.port, 502);
    EXPECT_EQ(address.Parse(L"TCP:1.0.200.255:65535", &reason), 0u);
    EXPECT_EQ(address.ip, 0x0100C8FFu);
    EXPECT_EQ(address.port, 65535);
}

TEST(ModbusAddressTest, MayHaveBlanksAroundTheIp) {
    for (const wchar_t* const text :
         {L"TCP: 192.168.0.17:502", L"TCP:192.168.0.17  :502", L"TCP:\t192.168.0.17 :502"}) {
        ModbusAddress address;
        QString reason;
        EXPECT_EQ(address.Parse(text, &reason), 0u) << reason.toStdString();
        EXPECT_EQ(address.ip, 0xC0A80011u);
    }
}

TEST(ModbusAddressTest, TheReasonNamesTheText) {
    QString reason;
    ModbusAddress().Parse(L"TCP:tower:502", &reason);
    EXPECT_EQ(reason, QStringLiteral("'TCP:tower:502' is no address of a Modbus module: names are not "
                                     "resolved: give the IPv4 address of the module"));
}

TEST(ModbusAddressTest, HasAFaultIfItIsRefusedAndNoneIfNot) {
    EXPECT_EQ(ModbusAddress::FaultOf(QStringLiteral("TCP:10.0.0.1:502")), QString());
    EXPECT_EQ(ModbusAddress::FaultOf(QStringLiteral("TCP:10.0.0.300:502")),
              QStringLiteral("'300' is no number from 0 to 255 without leading zeros"));
    EXPECT_EQ(ModbusAddress::FaultOf(QString(100000, QLatin1Char('1'))), QStringLiteral("it is too long"));
}

TEST(ModbusAddressTest, OfATextWithoutEndNotMoreIsReadThanAnAddressIsLong) {
    // No terminating zero within, so that reading on would leave the array.
    const std::wstring endless(65, L'1');
    QString reason;
    EXPECT_NE(ModbusAddress().Parse(endless.data(), &reason), 0u);
    EXPECT_TRUE(reason.endsWith(QLatin1String("it is too long")));
    EXPECT_LT(reason.size(), 150);
}

}  // namespace
