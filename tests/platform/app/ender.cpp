// SPDX-License-Identifier: Apache-2.0
// Prints what is called as its application objects end.
#include <platform/app/applicationend.h>

#include <QtCore/QCoreApplication>

#include <cstdio>
#include <memory>
#include <optional>

namespace {

std::unique_ptr<ApplicationEnd> Printing(const char* word) {
    return std::make_unique<ApplicationEnd>([word] { std::printf("%s ", word); });
}

/// Outlives everything, and is never called: no application object follows.
std::unique_ptr<ApplicationEnd>& Static() {
    static std::unique_ptr<ApplicationEnd> end;
    return end;
}

}  // namespace

int main(int argc, char** argv) {
    const auto before = Printing("before");
    {
        const QCoreApplication application(argc, argv);
        const auto within = Printing("within");
        Printing("destroyed").reset();
        std::printf("1: ");
    }
    std::optional<ApplicationEnd> itself;
    std::unique_ptr<ApplicationEnd> another;
    std::unique_ptr<ApplicationEnd> destroyed = Printing("destroyed by another");
    {
        const QCoreApplication application(argc, argv);
        itself.emplace([&] {
            std::printf("itself ");
            destroyed.reset();
            another = Printing("another");
            itself.reset();
        });
        std::printf("2: ");
    }
    Static() = Printing("static");
    return 0;
}
