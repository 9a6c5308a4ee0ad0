// SPDX-License-Identifier: Apache-2.0
#include "contest.h"

#include <QtCore/QCoreApplication>

void AddNotifyContests();
void AddLookupContests();
void AddTreeContests();
void AddDataObjectContests();
void AddBlankingContests();

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    AddNotifyContests();
    AddLookupContests();
    AddTreeContests();
    AddDataObjectContests();
    AddBlankingContests();
    return contest::Run(argc, argv);
}
