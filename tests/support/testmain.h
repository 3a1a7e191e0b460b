// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTest>

#include <tuple>
#include <utility>

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
            int column = 0;
            (QTest::addColumn<Values>(Columns[column++]), ...);
        }
        void operator()(const char* name, const Values&... values) const
        {
            QTestData& row = QTest::newRow(name);
            (row << ... << values);
        }
    };

    // The values of the current row.
    template <typename... Values> [[nodiscard]] static std::tuple<Values...> row()
    {
        return values<Values...>(std::index_sequence_for<Values...>());
    }

private:
    static constexpr const char* Columns[] = {"first", "second", "third", "fourth", "fifth"};

    template <typename... Values, std::size_t... Indexes>
    static std::tuple<Values...> values(std::index_sequence<Indexes...>)
    {
        return {*static_cast<const Values*>(QTest::qData(Columns[Indexes], qMetaTypeId<Values>()))...};
    }
};

// Writes a file anew; ends the program where that cannot be done.
void writeFile(const QString& path, const QByteArray& content);

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
