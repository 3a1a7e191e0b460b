// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/records/drawing.h"
#include "platform/svg/workingfile/drawingfile.h"

#include <string>

namespace mirn::zelsvg {

// The working file of a drawing: its parsed records as a binary image. The object holds only the path; each operation
// opens the file anew. docs/formats.md describes the layout.
class WorkingFile
{
public:
    explicit WorkingFile(std::string path);

    // Loads the image into `drawing`. Returns true if the file exists, is intact, has this format and was made from a
    // drawing with the size, time and content of `source`; otherwise false, with `drawing` empty. The position of
    // `source` afterwards is unspecified.
    //
    // The content is compared by its hash, unless the file system shows that the drawing is untouched. If it was
    // touched but not changed, the working file is rewritten with the new stamp.
    [[nodiscard]] bool load(DrawingFile& source, Drawing& drawing) const;

    // Writes the file atomically, by writing a new one beside it and renaming that. Failures are ignored; they leave
    // the old file or none, and nothing else.
    void save(const DrawingKey& key, const Drawing& drawing) const;

private:
    std::string m_path;
};

} // namespace mirn::zelsvg
