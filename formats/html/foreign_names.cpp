#include "formats/html/foreign_names.h"

#include <algorithm>
#include <array>

#include "formats/html/characters.h"

namespace intake::html {

namespace {

constexpr std::array<std::string_view, 37> SVG_ELEMENTS{"altGlyph",
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

constexpr std::array<std::string_view, 58> SVG_ATTRIBUTES{"attributeName",
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

constexpr std::array<std::string_view, 1> MATHML_ATTRIBUTES{"definitionURL"};

struct Prefixed {
    std::string_view written, name;
};

constexpr std::array<Prefixed, 10> PREFIXED_ATTRIBUTES{{{"xlink:actuate", "xlink actuate"},
                                                        {"xlink:arcrole", "xlink arcrole"},
                                                        {"xlink:href", "xlink href"},
                                                        {"xlink:role", "xlink role"},
                                                        {"xlink:show", "xlink show"},
                                                        {"xlink:title", "xlink title"},
                                                        {"xlink:type", "xlink type"},
                                                        {"xml:lang", "xml lang"},
                                                        {"xml:space", "xml space"},
                                                        {"xmlns:xlink", "xmlns xlink"}}};

/// The name of the list that differs from `name`, which is in lower case, in case only.
template <class Names>
std::string_view adjusted(std::string_view name, const Names& names) {
    const auto found = std::find_if(names.begin(), names.end(), [name](std::string_view each) {
        return equalIgnoringCase(each, name);
    });
    return found == names.end() ? name : *found;
}

std::string_view withPrefix(std::string_view name) {
    const auto found = std::find_if(PREFIXED_ATTRIBUTES.begin(), PREFIXED_ATTRIBUTES.end(),
                                    [name](const Prefixed& each) { return each.written == name; });
    return found == PREFIXED_ATTRIBUTES.end() ? name : found->name;
}

}  // namespace

void adjustForeignNames(Token& token, Namespace space) {
    const bool isSvg = space == Namespace::SVG;
    if (isSvg) {
        token.text = adjusted(token.text, SVG_ELEMENTS);
    }
    for (Attribute* each = token.attributes; each != nullptr; each = each->next) {
        each->name = withPrefix(isSvg ? adjusted(each->name, SVG_ATTRIBUTES)
                                      : adjusted(each->name, MATHML_ATTRIBUTES));
    }
}

}  // namespace intake::html
