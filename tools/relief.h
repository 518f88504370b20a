#pragma once

/// The colours of an atlas plate: land by height, climate and ice, sea by depth, both lit from the
/// north-west. Degrees north and east positive, longitude −180 … 180; heights in metres.
namespace pelorin::tools {

/// Red, green and blue, 0 … 255, not yet rounded.
struct Colour {
  float R = 0;
  float G = 0;
  float B = 0;
};

/// `part` 0 gives `a`, 1 gives `b`.
Colour Mix(const Colour& a, const Colour& b, float part);

Colour LandColour(float heightM, float latitudeDeg, float longitudeDeg);

/// `heightM` below 0 is depth; shallower than 0 counts as 0.
Colour SeaColour(float heightM);

Colour LakeColour();

/// How bright a slope is: 1 for level ground, more where it faces the light. Slopes are rises in metres
/// per metre eastward and northward, already exaggerated as far as wanted.
float HillShade(float eastwardSlope, float northwardSlope);

/// The colour in that light; the limits keep detail in the brightest and darkest slopes.
Colour Lit(const Colour& colour, float shade);

}  // namespace pelorin::tools
