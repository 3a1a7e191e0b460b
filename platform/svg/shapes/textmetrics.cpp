// SPDX-License-Identifier: MIT
#include "platform/svg/shapes/textmetrics.h"

namespace mirn::zelsvg {

namespace {

// Thousandths of the font size, from space (32) to 255, with 16 characters in a row.
// clang-format off
constexpr short Advances[] = {
     318,  401,  460,  838,  636,  950,  780,  275,  390,  390,  500,  838,  318,  361,  318,  337,
     636,  636,  636,  636,  636,  636,  636,  636,  636,  636,  337,  337,  838,  838,  838,  531,
    1000,  684,  686,  698,  770,  632,  575,  775,  752,  295,  295,  656,  557,  863,  748,  787,
     603,  787,  695,  635,  611,  732,  684,  989,  685,  611,  685,  390,  337,  390,  838,  500,
     500,  613,  635,  550,  635,  615,  352,  635,  634,  278,  278,  579,  278,  974,  634,  612,
     635,  635,  411,  521,  392,  634,  592,  818,  592,  592,  525,  636,  337,  636,  838,  600,
     600,  600,  600,  600,  600,  600,  600,  600,  600,  600,  600,  600,  600,  600,  600,  600,
     600,  600,  600,  600,  600,  600,  600,  600,  600,  600,  600,  600,  600,  600,  600,  600,
     318,  401,  636,  636,  636,  636,  337,  500,  500, 1000,  471,  612,  838,  361, 1000,  500,
     500,  838,  401,  401,  500,  636,  636,  318,  500,  401,  471,  612,  969,  969,  969,  531,
     684,  684,  684,  684,  684,  684,  974,  698,  632,  632,  632,  632,  295,  295,  295,  295,
     775,  748,  787,  787,  787,  787,  787,  838,  787,  732,  732,  732,  732,  611,  605,  630,
     613,  613,  613,  613,  613,  613,  982,  550,  615,  615,  615,  615,  278,  278,  278,  278,
     612,  634,  612,  612,  612,  612,  612,  838,  612,  634,  634,  634,  634,  592,  635,  592,
};
// clang-format on
constexpr unsigned FirstCharacter = 32;
static_assert(sizeof Advances / sizeof *Advances == 256 - FirstCharacter);

} // namespace

double textAdvance(std::string_view latin1)
{
    double sum = 0.0;
    for (char c : latin1) {
        const auto character = static_cast<unsigned char>(c);
        if (character >= FirstCharacter)
            sum += Advances[character - FirstCharacter];
    }
    return sum / 1000.0;
}

} // namespace mirn::zelsvg
