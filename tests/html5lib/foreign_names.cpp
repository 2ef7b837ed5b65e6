#include "foreign_names.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <string_view>

namespace html5lib {
namespace {

constexpr std::string_view kSvgTags[] = {"altGlyph",
                                         "altGlyphDef",
                                         "altGlyphItem",
                                         "animateColor",
                                         "animateMotion",
                                         "animateTransform",
                                         "clipPath",
                                         "feBlend",
                                         "feColorMatrix",
                                         "feComponentTransfer",
                                         "feComposite",
                                         "feConvolveMatrix",
                                         "feDiffuseLighting",
                                         "feDisplacementMap",
                                         "feDistantLight",
                                         "feDropShadow",
                                         "feFlood",
                                         "feFuncA",
                                         "feFuncB",
                                         "feFuncG",
                                         "feFuncR",
                                         "feGaussianBlur",
                                         "feImage",
                                         "feMerge",
                                         "feMergeNode",
                                         "feMorphology",
                                         "feOffset",
                                         "fePointLight",
                                         "feSpecularLighting",
                                         "feSpotLight",
                                         "feTile",
                                         "feTurbulence",
                                         "foreignObject",
                                         "glyphRef",
                                         "linearGradient",
                                         "radialGradient",
                                         "textPath"};

constexpr std::string_view kSvgAttributes[] = {"attributeName",
                                               "attributeType",
                                               "baseFrequency",
                                               "baseProfile",
                                               "calcMode",
                                               "clipPathUnits",
                                               "diffuseConstant",
                                               "edgeMode",
                                               "filterUnits",
                                               "glyphRef",
                                               "gradientTransform",
                                               "gradientUnits",
                                               "kernelMatrix",
                                               "kernelUnitLength",
                                               "keyPoints",
                                               "keySplines",
                                               "keyTimes",
                                               "lengthAdjust",
                                               "limitingConeAngle",
                                               "markerHeight",
                                               "markerUnits",
                                               "markerWidth",
                                               "maskContentUnits",
                                               "maskUnits",
                                               "numOctaves",
                                               "pathLength",
                                               "patternContentUnits",
                                               "patternTransform",
                                               "patternUnits",
                                               "pointsAtX",
                                               "pointsAtY",
                                               "pointsAtZ",
                                               "preserveAlpha",
                                               "preserveAspectRatio",
                                               "primitiveUnits",
                                               "refX",
                                               "refY",
                                               "repeatCount",
                                               "repeatDur",
                                               "requiredExtensions",
                                               "requiredFeatures",
                                               "specularConstant",
                                               "specularExponent",
                                               "spreadMethod",
                                               "startOffset",
                                               "stdDeviation",
                                               "stitchTiles",
                                               "surfaceScale",
                                               "systemLanguage",
                                               "tableValues",
                                               "targetX",
                                               "targetY",
                                               "textLength",
                                               "viewBox",
                                               "viewTarget",
                                               "xChannelSelector",
                                               "yChannelSelector",
                                               "zoomAndPan"};

constexpr std::string_view kMathMlAttributes[] = {"definitionURL"};

// Shown with a blank instead of the colon, behind which the local name stands.
constexpr std::string_view kNamespacedAttributes[] = {
    "xlink:actuate", "xlink:arcrole", "xlink:href", "xlink:role", "xlink:show",
    "xlink:title",   "xlink:type",    "xml:lang",   "xml:space",  "xmlns:xlink"};

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

// The name of the list that differs from `name` at most in letter case, else `name`.
template <std::size_t N>
std::string Adjusted(const std::string& name, const std::string_view (&names)[N]) {
    for (std::string_view listed : names) {
        if (EqualIgnoringCase(listed, name)) return std::string(listed);
    }
    return name;
}

std::string WithNamespaceApart(std::string name) {
    if (std::find(std::begin(kNamespacedAttributes), std::end(kNamespacedAttributes), name) !=
        std::end(kNamespacedAttributes)) {
        name[name.find(':')] = ' ';
    }
    return name;
}

}  // namespace

std::string SvgTagName(const std::string& name) {
    return Adjusted(name, kSvgTags);
}

std::string SvgAttributeName(const std::string& name) {
    return WithNamespaceApart(Adjusted(name, kSvgAttributes));
}

std::string MathMlAttributeName(const std::string& name) {
    return WithNamespaceApart(Adjusted(name, kMathMlAttributes));
}

}  // namespace html5lib
