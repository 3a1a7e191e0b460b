// SPDX-License-Identifier: MIT
#include "platform/contract/svgparser.h"

class SVGParserPrivate
{
};

SVGParser::SVGParser() = default;
SVGParser::~SVGParser() = default;

bool SVGParser::loadSVGElements(const std::string&, const std::string&) { return false; }
zel_Parameter SVGParser::getSVGParameter() const { return {}; }
const std::vector<zel_SingleGraphItem*>& SVGParser::getGraphicItems() const
{
    static const std::vector<zel_SingleGraphItem*> none;
    return none;
}
std::string SVGParser::errorString() const { return "not built yet"; }
std::vector<std::string> SVGParser::warnings() const { return {}; }
bool SVGParser::isLoadedFromWorkingFile() const { return false; }
static SVGParser::Factory& parserFactory()
{
    static SVGParser::Factory factory;
    return factory;
}
void SVGParser::setFactory(Factory factory) { parserFactory() = std::move(factory); }
std::unique_ptr<SVGParser> SVGParser::create()
{
    return parserFactory() ? parserFactory()() : std::make_unique<SVGParser>();
}
