// SPDX-License-Identifier: MIT
#include "platform/svg/document/elementdecoder.h"
#include "tests/support/testmain.h"
#include "tests/svg/memorysource.h"

#include <QDir>

namespace {

const QByteArray Svg
    = "<svg xmlns='http://www.w3.org/2000/svg' xmlns:t='urn:tovanel:chip-drawing' width='9' height='9'>";
const QByteArray Rect = "<rect width='1' height='1'/>";

[[nodiscard]] std::string everything(const QByteArray& file, mirn::zelsvg::XmlReading reading, std::size_t blockSize)
{
    MemorySource source(std::string_view(file.constData(), static_cast<std::size_t>(file.size())), blockSize);
    return everythingRead(source, mirn::zelsvg::Limits(), reading);
}

class Ignorer final : public mirn::zelsvg::XmlHandler
{
public:
    void startTag(const mirn::zelsvg::XmlName&, const mirn::zelsvg::XmlAttribute*, std::size_t) override { }
    void endTag() override { }
    void text(std::string_view) override { }
    [[nodiscard]] bool isFinished() const override { return false; }
};

// Whether the quick way does it alone.
[[nodiscard]] bool isQuick(const QByteArray& file)
{
    Ignorer ignorer;
    mirn::zelsvg::Diagnostics diagnostics("");
    MemorySource source(std::string_view(file.constData(), static_cast<std::size_t>(file.size())));
    const mirn::zelsvg::Limits limits;
    return makeTagReader(mirn::zelsvg::XmlReading::Quick, ignorer, diagnostics, limits)->read(source);
}

} // namespace

// The quick way to read a drawing against the thorough one: what a drawing is read as does not depend on it.
class TestSvgReadings : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    // The seeds of the fuzz target xml. Those whose name says so are read by the quick way alone, or are not.
    void readingsAgree_data()
    {
        const Rows<QString> row; // the file
        for (const QFileInfo& seed : QDir(ZEL_SEED_FOLDER).entryInfoList(QDir::Files))
            row(qPrintable(seed.fileName()), seed.filePath());
    }

    void readingsAgree()
    {
        const auto [path] = row<QString>();
        const QByteArray file = zeltest::contentOf(path);
        for (std::size_t blockSize : {1, 2, 3, 5, 1 << 20}) {
            QCOMPARE(everything(file, mirn::zelsvg::XmlReading::Quick, blockSize),
                everything(file, mirn::zelsvg::XmlReading::Thorough, blockSize));
        }
        const QByteArray kind = QByteArray(QTest::currentDataTag()).split('-').first();
        if (kind == "quick" || kind == "slow" || kind == "mistake")
            QCOMPARE(isQuick(file), kind == "quick");
    }

    void readingsAgreeOnEveryDamage()
    {
        const QByteArray whole = "<?xml version='1.0'?>\n<!DOCTYPE svg SYSTEM 'a'>" + Svg
            + "<!-- c --><g t:id='3'><title>a&amp;b</title>" + Rect
            + "</g>\n<text x='1'>\xC3\xA4<![CDATA[<]]>&#65;</text></svg>\n";
        const QByteArray replacements = "<>&'\"=/!?-]; \n\rx:0\x80\xC3\x01";
        for (int i = 0; i < whole.size(); ++i) {
            for (int j = 0; j <= replacements.size(); ++j) {
                QByteArray damaged = whole;
                if (j < replacements.size())
                    damaged[i] = replacements[j];
                else
                    damaged.remove(i, 1);
                if (everything(damaged, mirn::zelsvg::XmlReading::Quick, 1 << 20)
                    != everything(damaged, mirn::zelsvg::XmlReading::Thorough, 1 << 20))
                    QFAIL(damaged.constData());
            }
        }
    }

    // The tags are longer than the blocks in which files are read.
    void readingsAgreeOnLongTags()
    {
        const QByteArray path = "<path d='M0 0" + QByteArray("h1v1H0z").repeated(150'000) + "'/>";
        const QByteArray comment = "<!--" + QByteArray(700'000, 'c') + "-->";
        const QByteArray text = "<text>" + QByteArray("\xC3\xA4 b").repeated(80'000) + "</text>";
        const QByteArray file = comment + Svg + text + comment + path + "\n<image/>" + text + "</svg>";
        QVERIFY(isQuick(file));
        QCOMPARE(everything(file, mirn::zelsvg::XmlReading::Quick, 1 << 16),
            everything(file, mirn::zelsvg::XmlReading::Thorough, ~std::size_t(0)));
    }
};

ZEL_TEST_MAIN(TestSvgReadings)
#include "tst_svgreadings.moc"
