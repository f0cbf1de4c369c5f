#include "core/Ordnersperre.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QSysInfo>
#include <QTemporaryDir>

namespace koben {
namespace {

TEST(Ordnersperre, WhatADeadProcessLeftHoldsNothing) {
    const QByteArray gone = "999999999\nkoben\n" + QSysInfo::machineHostName().toUtf8() + '\n';
    for (const QByteArray& left :
         {QByteArray(), QByteArray("\n"), QByteArray("12"), QByteArray("kaputt\n\n\n"), gone}) {
        const QTemporaryDir folder;
        QFile file(folder.filePath("koben.lock"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(left);
        file.close();
        Ordnersperre first, second;
        EXPECT_TRUE(first.nehmen(folder.path())) << left.toStdString();
        EXPECT_TRUE(first.nehmen(folder.path())) << "it has it already";
        EXPECT_FALSE(second.nehmen(folder.path())) << "the first one lives";
        EXPECT_FALSE(second.nehmen(folder.filePath("fehlt")));
    }
}

}  // namespace
}  // namespace koben
