// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/records/drawing.h"
#include "platform/svg/workingfile/drawingfile.h"

#include <string>

namespace zelsvg {

// The binary image of a parsed drawing. docs/formats.md has its layout.
class WorkingFile
{
public:
    explicit WorkingFile(std::string path);

    // True when the file is there, whole, of this format and made from a drawing of the size, time and content of
    // `source`; `drawing` then has what was written. Otherwise false, with `drawing` empty. `source` stands anywhere
    // afterwards.
    //
    // The content is compared by its hash, unless the file system says that nobody has touched the drawing since. A
    // file of a drawing that somebody has touched, but not changed, is written anew.
    [[nodiscard]] bool load(DrawingFile& source, Drawing& drawing) const;

    // Writes the file beside its place and renames it. What goes wrong leaves the old one or none, and nothing else
    // behind; nobody needs to know.
    void save(const DrawingKey& key, const Drawing& drawing) const;

private:
    std::string m_path;
};

} // namespace zelsvg
