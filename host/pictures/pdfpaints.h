// SPDX-License-Identifier: MIT
#pragma once

#include <QBrush>
#include <QByteArray>
#include <QSizeF>
#include <QTransform>

#include <set>
#include <utility>
#include <vector>

namespace mirn::zelchip {

class PdfFile;

// What a PDF page paints with, besides plain colours: degrees of opacity, and linear gradients, of which the
// translucent ones mask what they paint. It keeps them to the end of the page.
class PdfPaints final
{
public:
    enum class Use { Fill, Stroke };

    PdfPaints(PdfFile& file, const QSizeF& page); // the file is not owned; the size is in points

    // Returns the operators that choose the brush. `transform` leads from the brush to the page. A gradient masks what
    // is painted until the page's state is restored.
    [[nodiscard]] QByteArray choose(const QBrush& brush, double opacity, const QTransform& transform, Use use);

    // Writes all, and returns the entries of the page's dictionary of resources.
    [[nodiscard]] QByteArray write();

private:
    [[nodiscard]] QByteArray chooseAlpha(double alpha, Use use);
    [[nodiscard]] QByteArray chooseGradient(const QLinearGradient& gradient, const QTransform& transform, Use use);
    [[nodiscard]] QByteArray mask(const QByteArray& shading);
    [[nodiscard]] int addLater(const QByteArray& content);

    PdfFile& m_file;
    const QSizeF m_page;
    std::set<int> m_alphas[2]; // by Use, from 0 to 255
    std::vector<std::pair<int, QByteArray>> m_later; // objects that wait for the end of the page
    QByteArray m_patterns; // entries of the dictionaries
    QByteArray m_masks;
};

} // namespace mirn::zelchip
