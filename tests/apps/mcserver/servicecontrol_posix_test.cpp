// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/serveroptions.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

namespace {

struct ServiceOption {
    const char* name;
    const char* option;
};

class ServiceOptionsElsewhere : public testing::TestWithParam<ServiceOption> {};

TEST_P(ServiceOptionsElsewhere, AreRefusedWithWhatThereIsInstead) {
    const QString option = QString::fromLatin1(GetParam().option);
    const ServerOptions options = ServerOptions::Parse({QStringLiteral("mcserver"), option});
    EXPECT_EQ(options.action, ServerOptions::EAction::Complain);
    EXPECT_EQ(options.text,
              option + QStringLiteral(": this system starts the server as any program: by mcserver.service, "
                                      "which is installed with it"));
}

INSTANTIATE_TEST_SUITE_P(, ServiceOptionsElsewhere,
                         testing::Values(ServiceOption{"Install", "--install-service"},
                                         ServiceOption{"Remove", "--remove-service"},
                                         ServiceOption{"Run", "--service"}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
