// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace zeltest {

// Base of every test class. Around each test function: a warning or worse that was not announced with
// QTest::ignoreMessage() is a failure, and the process-wide services are put back as they were. A class with an init()
// or cleanup() of its own calls these.
class Test : public QObject
{
    Q_OBJECT
protected Q_SLOTS:
    void init();
    void cleanup();
};

// Runs the test object in an offscreen application with a pinned style and font.
int runTests(QObject* tests, int argc, char** argv);

} // namespace zeltest

// The main function of a test program with one test class.
#define ZEL_TEST_MAIN(TestClass)                                                                                       \
    int main(int argc, char** argv)                                                                                    \
    {                                                                                                                  \
        TestClass tests;                                                                                               \
        return zeltest::runTests(&tests, argc, argv);                                                                  \
    }
