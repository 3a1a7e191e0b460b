// SPDX-License-Identifier: MIT

// Reads the input as a table of sites that is imported. Whatever is accepted becomes a table that the device's reader
// accepts as well.

#include "engine/model/device.h"
#include "engine/sitetablereader.h"
#include "importer/importedsites.h"
#include "importer/sitereader.h"
#include "importer/sitetablewriter.h"
#include "tests/fuzz/inputfile.h"

#include <QFile>
#include <QStringList>

using zelfuzz::check;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    mirn::zelimporter::ImportOptions options;
    options.sites = zelfuzz::inputFile("input.csv", reinterpret_cast<const char*>(data), size);
    const QString compact = options.sites + QStringLiteral(".compact");
    QFile::remove(compact);
    mirn::zelimporter::SiteTableWriter writer(compact);
    mirn::zelimporter::ImportedSites sites;
    const QString error = mirn::zelimporter::SiteReader(options, writer).read(sites, {});
    check(writer.close().isEmpty());
    if (!error.isEmpty()) {
        check(error.startsWith(options.sites + QLatin1Char(':')));
        return 0;
    }
    mirn::zelengine::Device device;
    for (int kind = 0; kind < sites.kinds.size(); ++kind)
        device.addKind({sites.kinds.string(kind), {}, {}, {}});
    QStringList warnings;
    check(mirn::zelengine::SiteTableReader(device).read(compact, &warnings).isEmpty());
    check(device.sites().size() == sites.sites.size());
    return 0;
}
