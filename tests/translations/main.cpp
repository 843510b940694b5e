// One application object for all tests, with the core's texts looked up as the game does.

#include "app/qt_localizer.hpp"

#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    QCoreApplication application(argc, argv);
    const zelvaine::QtLocalizer localizer;
    zelvaine::installLocalizer(&localizer);
    const int status = RUN_ALL_TESTS();
    zelvaine::installLocalizer(nullptr);
    return status;
}
