// SPDX-License-Identifier: Apache-2.0
#include "contest.h"

#include <QtCore/QCoreApplication>

void AddNotifyContests();
void AddLookupContests();
void AddTreeContests();
void AddDataObjectContests();
void AddBlankingContests();
void AddConfigContests();

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    AddNotifyContests();
    AddLookupContests();
    AddTreeContests();
    AddDataObjectContests();
    AddBlankingContests();
    AddConfigContests();
    return contest::Run(argc, argv);
}
