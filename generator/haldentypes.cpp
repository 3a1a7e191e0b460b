// SPDX-License-Identifier: MIT
#include "generator/haldentypes.h"

namespace mirn::zeldevicegenerator {

const char* haldenTypes()
{
    return R"("types": [
    {"name": "IP", "title": "IP", "code": "IP", "parts": "DCUCHANNEL", "parameters": {
      "rate": {"title": "Rate per lane", "unit": "Gb/s", "value": 2.5, "choices": [1.25, 2.5, 3.125, 5, 6.25]}}},
    {"name": "DCUCHANNEL", "title": "SerDes channel", "code": "DCUCHANNEL"},
    {"name": "EXTREF", "title": "Reference clock", "code": "EXTREF", "feeds": true, "parameters": {
      "frequency": {"title": "Frequency", "unit": "MHz", "value": 100, "minimum": 10, "maximum": 500}}},
    {"name": "PLL", "title": "PLL", "code": "PLL", "feeds": true, "parameters": {
      "frequency": {"title": "Frequency", "unit": "MHz", "value": 100, "minimum": 5, "maximum": 800}}},
    {"name": "UVCCIO", "title": "I/O supply", "code": "UVCCIO", "properties": ["voltage"]}
  ],
  "rules": [
    {"rule": "same-unit", "type": "DCUCHANNEL"},
    {"rule": "reachable", "type": "EXTREF"},
    {"rule": "reachable", "type": "PLL"},
    {"rule": "agree", "type": "UVCCIO", "property": "voltage"}
  ])";
}

} // namespace mirn::zeldevicegenerator
