// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/files.h"

#include <QObject>
#include <QTest>

#include <tuple>
#include <vector>

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

protected:
    // Makes the table of a test, with columns of these types. Each call is a row: its name, then a value per column.
    template <typename... Values> class Rows
    {
    public:
        Rows()
        {
            table<Values...>().clear();
            QTest::addColumn<std::size_t>("row");
        }
        void operator()(const char* name, const Values&... values) const
        {
            QTest::newRow(name) << table<Values...>().size();
            table<Values...>().emplace_back(values...);
        }
    };

    // The values of the current row.
    template <typename... Values> [[nodiscard]] static const std::tuple<Values...>& row()
    {
        QFETCH(std::size_t, row);
        return table<Values...>()[row];
    }

private:
    template <typename... Values> static std::vector<std::tuple<Values...>>& table()
    {
        static std::vector<std::tuple<Values...>> rows;
        return rows;
    }
};

// Gives the application a style and a font that are the same on every machine.
void pinLook();

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
