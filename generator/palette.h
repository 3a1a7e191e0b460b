// SPDX-License-Identifier: MIT
#pragma once

namespace mirn::zeldevicegenerator {

// The style sheet of the sample drawing. Texts are always black, so all backgrounds are light; each kind of site has
// one hue, with the cell's body paler than its parts. Strong green, blue and magenta are reserved for selection, filter
// and highlight. Strokes are thin compared with the smallest part: one pixel wide in the full view and a few at the
// highest zoom. Lines are one pixel wide at every zoom. Parts of cells that can be occupied have darker strokes than
// others, because an occupied site takes on one colour with all its parts.
inline constexpr const char* STYLE_SHEET = R"css(
  text { font-family: 'DejaVu Sans'; text-anchor: middle; fill: #000000 }
  line, polygon { stroke-width: 0.1 }
  rect { stroke-width: 0.06 }
  .die { stroke: #a39f92; stroke-width: 2 }
  .region { fill: #efede6; stroke: #d9d6cb; stroke-width: 0.2 }
  .spine { fill: #dcd8ca; stroke: #c3bead; stroke-width: 0.2 }
  .clock { fill: #cfc8b2; stroke: #a49c80; stroke-width: 0.2 }
  .clock-part { fill: #ece7d6; stroke: #a49c80 }
  .clock-fine { fill: #f6f2e6; stroke: #a49c80 }
  .clock-mux { fill: #cfc8b2 }
  .clock-wire { stroke: #a49c80 }
  .bank { fill: #e4eaef; stroke: #b9c5cf; stroke-width: 0.2 }
  .pad { fill: #c0d0de; stroke: #8fa5b9; stroke-width: 0.12 }
  .pad-b { fill: #b3c6d7; stroke: #8fa5b9; stroke-width: 0.12 }
  .pad-clock { fill: #a9c7cf; stroke: #7f9fa9; stroke-width: 0.12 }
  .pad-metal { fill: #f3f5f7; stroke: #8fa5b9 }
  .pad-metal-fill { fill: #f3f5f7 }
  .pad-part { fill: #dde6ed; stroke: #8fa5b9 }
  .pad-fine { fill: #eef3f7; stroke: #8fa5b9 }
  .pad-wire { stroke: #5f7a93 }
  .supply { fill: #e3b7bb; stroke: #b98388; stroke-width: 0.2 }
  .supply-part { fill: #f5e6e7; stroke: #a3656b; stroke-width: 0.12 }
  .supply-fine { fill: #fbf3f4; stroke: #a3656b; stroke-width: 0.08 }
  .supply-wire { stroke: #a3656b }
  .pll { fill: #ecc0aa; stroke: #c0836a; stroke-width: 0.2 }
  .pll-part { fill: #f8e6dc; stroke: #a3634a; stroke-width: 0.12 }
  .pll-fine { fill: #fdf5f0; stroke: #a3634a; stroke-width: 0.08 }
  .pll-wire { stroke: #a3634a }
  .system { fill: #d3d6da; stroke: #9da3aa; stroke-width: 0.2 }
  .system-part { fill: #eceef0; stroke: #9da3aa }
  .system-fine { fill: #f8f9fa; stroke: #9da3aa }
  .system-wire { stroke: #7b828a }
  .unit { fill: #e3ddee; stroke: #aa9cc8; stroke-width: 0.2 }
  .unit-part { fill: #efebf6; stroke: #aa9cc8 }
  .unit-fine { fill: #f9f7fc; stroke: #aa9cc8 }
  .channel { fill: #c9bce0; stroke: #937fbd; stroke-width: 0.2 }
  .channel-part { fill: #e4dcf1; stroke: #6f58a3; stroke-width: 0.12 }
  .channel-fine { fill: #f4f0fa; stroke: #6f58a3; stroke-width: 0.08 }
  .channel-wire { stroke: #6f58a3 }
  .reference { fill: #f2d292; stroke: #c79e4b; stroke-width: 0.2 }
  .reference-part { fill: #faedd0; stroke: #9c7727; stroke-width: 0.12 }
  .reference-fine { fill: #fdf8ea; stroke: #9c7727; stroke-width: 0.08 }
  .reference-buffer { fill: #faedd0; stroke: #9c7727 }
  .reference-wire { stroke: #9c7727 }
  .logic { fill: #d9deda; stroke: #bcc5be; stroke-width: 0.12 }
  .slice { fill: #e8ece9; stroke: #a9b5ac }
  .lut { fill: #f8faf8; stroke: #94a398 }
  .register { fill: #cfdcd4; stroke: #94a398 }
  .switch { fill: #c8d1cb; stroke: #a9b5ac }
  .logic-wire { stroke: #7d8f83 }
  .memory { fill: #b3d2cd; stroke: #7fa9a2; stroke-width: 0.2 }
  .memory-part { fill: #dcecea; stroke: #7fa9a2 }
  .memory-fine { fill: #eef6f5; stroke: #7fa9a2 }
  .memory-array { fill: #c8e0dc; stroke: #7fa9a2 }
  .memory-wire { stroke: #7fa9a2 }
  .dsp { fill: #e8dcab; stroke: #bfae67; stroke-width: 0.2 }
  .dsp-part { fill: #f6f0d8; stroke: #bfae67 }
  .dsp-fine { fill: #fbf8ec; stroke: #bfae67 }
  .dsp-wire { stroke: #94823a }
)css";

} // namespace mirn::zeldevicegenerator
