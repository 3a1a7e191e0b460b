// SPDX-License-Identifier: MIT
#include "generator/devicefile.h"

#include <map>

namespace mirn::zeldevicegenerator {

namespace {

std::string quoted(const std::string& text)
{
    std::string result = "\"";
    for (char c : text) {
        if (c == '"' || c == '\\')
            result += '\\';
        result += c;
    }
    return result + '"';
}

std::string member(const char* key, const std::string& json)
{
    return quoted(key) + ": " + json;
}

std::string joined(const std::vector<std::string>& parts)
{
    std::string result;
    for (const std::string& part : parts)
        result += (result.empty() ? "" : ", ") + part;
    return result;
}

std::string list(const std::vector<std::string>& texts)
{
    std::vector<std::string> parts;
    for (const std::string& text : texts)
        parts.push_back(quoted(text));
    return '[' + joined(parts) + ']';
}

std::string settings(const std::vector<Setting>& settings)
{
    std::vector<std::string> parts;
    for (const Setting& setting : settings) {
        std::string json = "{";
        if (!setting.value.empty())
            json += member("value", quoted(setting.value)) + ", ";
        parts.push_back(member(setting.key.c_str(), json + member("choices", list(setting.choices)) + '}'));
    }
    return '{' + joined(parts) + '}';
}

std::string attributes(const Site& site)
{
    std::vector<std::string> parts;
    for (const auto& [key, value] : site.attributes)
        parts.push_back(member(key.c_str(), quoted(value)));
    return '{' + joined(parts) + '}';
}

std::string disabledBy(const Site& site)
{
    std::vector<std::string> parts;
    for (const auto& [key, values] : site.disabledBy)
        parts.push_back(member(key.c_str(), list(values)));
    return '{' + joined(parts) + '}';
}

std::string siteRecord(const Site& site)
{
    std::vector<std::string> parts{
        member("id", std::to_string(site.id)), member("name", quoted(site.name)), member("kind", quoted(site.kind))};
    if (!site.group.empty())
        parts.push_back(member("group", quoted(site.group)));
    if (!site.neighbours.empty())
        parts.push_back(member("neighbours", list(site.neighbours)));
    if (!site.reaches.empty())
        parts.push_back(member("reaches", list(site.reaches)));
    if (!site.attributes.empty())
        parts.push_back(member("attributes", attributes(site)));
    if (!site.settings.empty())
        parts.push_back(member("settings", settings(site.settings)));
    if (!site.disabledBy.empty())
        parts.push_back(member("disabledBy", disabledBy(site)));
    return "{" + joined(parts) + '}';
}

std::string kindRecord(const SiteKind& kind)
{
    std::vector<std::string> parts{member("name", quoted(kind.name)), member("title", quoted(kind.title))};
    if (kind.accepts)
        parts.push_back(member("accepts", list({kind.accepts})));
    if (kind.occupiedFill)
        parts.push_back(member("occupiedFill", quoted(kind.occupiedFill)));
    return '{' + joined(parts) + '}';
}

// One record per line keeps the differences between two devices readable.
template <typename Record, typename Write> std::string lines(const std::vector<Record>& records, Write write)
{
    std::string result;
    for (const Record& record : records)
        result += (result.empty() ? "    " : ",\n    ") + write(record);
    return "[\n" + result + "\n  ]";
}

} // namespace

std::string deviceFile(const std::string& name, const std::string& drawing, const std::string& filter,
    const std::string& types, const std::vector<SiteKind>& kinds, const std::vector<Site>& sites)
{
    return "{\n  " + member("name", quoted(name)) + ",\n  " + member("drawing", quoted(drawing)) + ",\n  "
        + member("filter", quoted(filter)) + ",\n  " + types + ",\n  " + member("kinds", lines(kinds, kindRecord))
        + ",\n  " + member("sites", lines(sites, siteRecord)) + "\n}\n";
}

std::string filterFile(const std::vector<SiteKind>& kinds, const std::vector<Site>& sites)
{
    std::map<std::string, std::string> titles;
    for (const SiteKind& kind : kinds)
        titles[kind.name] = kind.title;
    std::string result;
    for (const Site& site : sites)
        result += quoted(titles[site.kind]) + ' ' + std::to_string(site.id) + '\n';
    return result;
}

} // namespace mirn::zeldevicegenerator
