#include "functions.h"

#include <stdexcept>

#include "../support/words.h"

namespace kormtest {

using namespace fixed;

namespace {

// Of a row: "name" a constant by value, "name:n" a pointer to n elements, "nameStride" behind an array's pointer,
// "count". Results stand behind the arrow; "det:1?" may be null, "dst:i" is a 32-bit integer. An "=" marks an input
// that may be the same memory as dst.
struct Row {
    const char* name;
    const char* arguments;
    GeometryReference reference;
    const char* remarks = "";
};

const Row rows[] = {
    // --- Vectors ---
    {"kormAdd_v2_32f", "src1:2= src2:2= -> dst:2", vectorSum<2>, "commutes noProductSum"},
    {"kormAdd_v3_32f", "src1:3= src2:3= -> dst:3", vectorSum<3>, "commutes noProductSum"},
    {"kormAdd_v4_32f", "src1:4= src2:4= -> dst:4", vectorSum<4>, "commutes noProductSum"},
    {"kormSub_v2_32f", "src1:2= src2:2= -> dst:2", vectorDifference<2>, "noProductSum"},
    {"kormSub_v3_32f", "src1:3= src2:3= -> dst:3", vectorDifference<3>, "noProductSum"},
    {"kormSub_v4_32f", "src1:4= src2:4= -> dst:4", vectorDifference<4>, "noProductSum"},
    {"kormMin_v2_32f", "src1:2= src2:2= -> dst:2", vectorMinimum<2>, "copies noProductSum"},
    {"kormMin_v3_32f", "src1:3= src2:3= -> dst:3", vectorMinimum<3>, "copies noProductSum"},
    {"kormMin_v4_32f", "src1:4= src2:4= -> dst:4", vectorMinimum<4>, "copies noProductSum"},
    {"kormMax_v2_32f", "src1:2= src2:2= -> dst:2", vectorMaximum<2>, "copies noProductSum"},
    {"kormMax_v3_32f", "src1:3= src2:3= -> dst:3", vectorMaximum<3>, "copies noProductSum"},
    {"kormMax_v4_32f", "src1:4= src2:4= -> dst:4", vectorMaximum<4>, "copies noProductSum"},
    {"kormMulC_v2_32f", "src:2= val -> dst:2", vectorScaled<2>, "noProductSum"},
    {"kormMulC_v3_32f", "src:3= val -> dst:3", vectorScaled<3>, "noProductSum"},
    {"kormMulC_v4_32f", "src:4= val -> dst:4", vectorScaled<4>, "noProductSum"},
    {"kormDotProduct_v2_32f", "src1:2= src2:2= -> dst:1", dotProduct<2>, "commutes"},
    {"kormDotProduct_v3_32f", "src1:3= src2:3= -> dst:1", dotProduct<3>, "commutes"},
    {"kormDotProduct_v4_32f", "src1:4= src2:4= -> dst:1", dotProduct<4>, "commutes"},
    {"kormLenSqr_v2_32f", "src:2= -> dst:1", squaredLength<2>},
    {"kormLenSqr_v3_32f", "src:3= -> dst:1", squaredLength<3>},
    {"kormLenSqr_v4_32f", "src:4= -> dst:1", squaredLength<4>},
    {"kormLen_v2_32f", "src:2= -> dst:1", length<2>},
    {"kormLen_v3_32f", "src:3= -> dst:1", length<3>},
    {"kormLen_v4_32f", "src:4= -> dst:1", length<4>},
    {"kormNormalize_v2_32f", "src:2= -> dst:2", normalized<2>},
    {"kormNormalize_v3_32f", "src:3= -> dst:3", normalized<3>},
    {"kormNormalize_v4_32f", "src:4= -> dst:4", normalized<4>},
    {"kormCrossProduct_v2_32f", "src1:2= src2:2= -> dst:1", crossProduct2},
    {"kormCrossProduct_v3_32f", "src1:3 src2:3 -> dst:3", crossProduct3},
    {"kormCrossProduct_v4_32f", "src1:4 src2:4 src3:4 -> dst:4", crossProduct4},

    // --- Constructors ---
    {"kormIdentity_m4_32f", "-> dst:16", identity, "copies noProductSum"},
    {"kormTranslation_m4_32f", "x y z -> dst:16", translation, "copies noProductSum"},
    {"kormScaling_m4_32f", "x y z -> dst:16", scaling, "copies noProductSum"},
    {"kormRotationX_m4_32f", "angle -> dst:16", rotationX, "angles noProductSum"},
    {"kormRotationY_m4_32f", "angle -> dst:16", rotationY, "angles noProductSum"},
    {"kormRotationZ_m4_32f", "angle -> dst:16", rotationZ, "angles noProductSum"},
    {"kormRotationYawPitchRoll_m4_32f", "yaw pitch roll -> dst:16", rotationYawPitchRoll, "angles"},
    {"kormRotationAxis_v3m4_32f", "axis:3 angle -> dst:16", rotationAxis, "angles"},
    {"kormLookAtLH_m4_32f", "eye:3 at:3 up:3 -> dst:16", lookAtLH},
    {"kormLookAtRH_m4_32f", "eye:3 at:3 up:3 -> dst:16", lookAtRH},
    {"kormOrthoLH_m4_32f", "viewWidth viewHeight zNear zFar -> dst:16", orthoLH, "noProductSum"},
    {"kormOrthoRH_m4_32f", "viewWidth viewHeight zNear zFar -> dst:16", orthoRH, "noProductSum"},
    {"kormOrthoOffCenterLH_m4_32f", "left right bottom top zNear zFar -> dst:16", orthoOffCenterLH, "noProductSum"},
    {"kormOrthoOffCenterRH_m4_32f", "left right bottom top zNear zFar -> dst:16", orthoOffCenterRH, "noProductSum"},
    {"kormPerspectiveLH_m4_32f", "viewWidth viewHeight zNear zFar -> dst:16", perspectiveLH, "noProductSum"},
    {"kormPerspectiveRH_m4_32f", "viewWidth viewHeight zNear zFar -> dst:16", perspectiveRH, "noProductSum"},
    {"kormPerspectiveFovLH_m4_32f", "fovY aspect zNear zFar -> dst:16", perspectiveFovLH, "angles noProductSum"},
    {"kormPerspectiveFovRH_m4_32f", "fovY aspect zNear zFar -> dst:16", perspectiveFovRH, "angles noProductSum"},
    {"kormPerspectiveOffCenterLH_m4_32f", "left right bottom top zNear zFar -> dst:16", perspectiveOffCenterLH,
     "noProductSum"},
    {"kormPerspectiveOffCenterRH_m4_32f", "left right bottom top zNear zFar -> dst:16", perspectiveOffCenterRH,
     "noProductSum"},

    // --- Algebra ---
    {"kormDet_m4_32f", "src:16= -> dst:1", determinant},
    {"kormInvert_m4_32f", "src:16= -> det:1? dst:16", inverse, "inversion"},
    {"kormTranspose_m4_32f", "src:16= -> dst:16", transpose, "copies noProductSum"},
    {"kormMul_mm4x4_32f", "src1:16= src2:16= -> dst:16", product, "nullCheck"},
    {"kormMulTranspose_m4_32f", "src1:16= src2:16= -> dst:16", transposedProduct},
    {"kormIsIdentity_m4_32f", "src:16= -> dst:i", identityTest, "identity noProductSum"},

    // --- Transforms ---
    {"kormAffineTransform_m4v2_32f", "src1:16 src2:2= -> dst:4", affine2},
    {"kormAffineTransform_m4v3_32f", "src1:16 src2:3= -> dst:4", affine3},
    {"kormAffineTransform_m4v4_32f", "src1:16 src2:4= -> dst:4", affine4},
    {"kormAffineTransform_m4v2a_32f", "src1:16 src2:2= src2Stride -> dst:4 dstStride count", affine2},
    {"kormAffineTransform_m4v3a_32f", "src1:16 src2:3= src2Stride -> dst:4 dstStride count", affine3},
    {"kormAffineTransform_m4v4a_32f", "src1:16 src2:4= src2Stride -> dst:4 dstStride count", affine4},
    {"kormAffineTransformCoord_m4v2_32f", "src1:16 src2:2= -> dst:2", affineCoord2},
    {"kormAffineTransformCoord_m4v3_32f", "src1:16 src2:3= -> dst:3", affineCoord3},
    {"kormAffineTransformCoord_m4v2a_32f", "src1:16 src2:2= src2Stride -> dst:2 dstStride count", affineCoord2},
    {"kormAffineTransformCoord_m4v3a_32f", "src1:16 src2:3= src2Stride -> dst:3 dstStride count", affineCoord3},
    {"kormAffineTransformNormal_m4v2_32f", "src1:16 src2:2= -> dst:2", affineNormal2},
    {"kormAffineTransformNormal_m4v3_32f", "src1:16 src2:3= -> dst:3", affineNormal3},
    {"kormAffineTransformNormal_m4v2a_32f", "src1:16 src2:2= src2Stride -> dst:2 dstStride count", affineNormal2},
    {"kormAffineTransformNormal_m4v3a_32f", "src1:16 src2:3= src2Stride -> dst:3 dstStride count", affineNormal3},
    {"kormProject_m4v3_32f", "projection:16 view:16 world:16 src:3= viewportWidth viewportHeight minZ maxZ -> dst:3",
     project},
    {"kormUnproject_m4v3_32f", "projection:16 view:16 world:16 src:3= viewportWidth viewportHeight minZ maxZ -> dst:3",
     unproject, "unprojection"},
    {"kormProject_m4v3a_32f",
     "projection:16 view:16 world:16 src:3= srcStride viewportWidth viewportHeight minZ maxZ -> dst:3 dstStride count",
     projectOfBatch},
    {"kormUnproject_m4v3a_32f",
     "projection:16 view:16 world:16 src:3= srcStride viewportWidth viewportHeight minZ maxZ -> dst:3 dstStride count",
     unproject, "unprojection"},

    // --- Curves ---
    {"kormBaryCentric_v2_32f", "src1:2= src2:2= src3:2= f g -> dst:2", baryCentric<2>},
    {"kormBaryCentric_v3_32f", "src1:3= src2:3= src3:3= f g -> dst:3", baryCentric<3>},
    {"kormBaryCentric_v4_32f", "src1:4= src2:4= src3:4= f g -> dst:4", baryCentric<4>},
    {"kormInterpolationLinear_v2_32f", "src1:2= src2:2= t -> dst:2", linear<2>},
    {"kormInterpolationLinear_v3_32f", "src1:3= src2:3= t -> dst:3", linear<3>},
    {"kormInterpolationLinear_v4_32f", "src1:4= src2:4= t -> dst:4", linear<4>},
    {"kormHermite_v2_32f", "src1:2= src2:2= src3:2= src4:2= t -> dst:2", hermite<2>},
    {"kormHermite_v3_32f", "src1:3= src2:3= src3:3= src4:3= t -> dst:3", hermite<3>},
    {"kormHermite_v4_32f", "src1:4= src2:4= src3:4= src4:4= t -> dst:4", hermite<4>},
    {"kormInterpolationCatmullRom_v2_32f", "src1:2= src2:2= src3:2= src4:2= t -> dst:2", catmullRom<2>},
    {"kormInterpolationCatmullRom_v3_32f", "src1:3= src2:3= src3:3= src4:3= t -> dst:3", catmullRom<3>},
    {"kormInterpolationCatmullRom_v4_32f", "src1:4= src2:4= src3:4= src4:4= t -> dst:4", catmullRom<4>},
};

Slotted parse(const std::string& word, bool result) {
    Slotted argument;
    const std::size_t colon = word.find(':');
    argument.name = word.substr(0, colon);
    if (colon == std::string::npos) {
        const bool stride = word.size() > 6 && word.substr(word.size() - 6) == "Stride";
        argument.slot = word == "count" ? Slot::count : stride ? Slot::stride : Slot::constant;
        return argument;
    }
    std::string rest = word.substr(colon + 1);
    argument.slot = result ? Slot::output : Slot::input;
    if (rest == "i") {
        argument.slot = Slot::integer;
        rest = "1";
    } else if (rest.back() == '?') {
        argument.slot = Slot::optional;
        rest.pop_back();
    } else if (rest.back() == '=') {
        argument.mayEqualDst = true;
        rest.pop_back();
    }
    argument.elements = std::stoi(rest);
    return argument;
}

GeometryFunction make(const Row& row) {
    GeometryFunction function;
    function.name = row.name;
    function.reference = row.reference;
    bool result = false;
    for (const std::string& word : wordsOf(row.arguments)) {
        if (word == "->") {
            result = true;
            continue;
        }
        function.arguments.push_back(parse(word, result));
        if (function.arguments.back().slot == Slot::stride)
            function.arguments[function.arguments.size() - 2].stride = static_cast<int>(function.arguments.size()) - 1;
    }
    for (const std::string& word : wordsOf(row.remarks)) {
        if (word == "copies") function.copies = true;
        else if (word == "noProductSum") function.contracts = false;
        else if (word == "commutes") function.commutes = true;
        else if (word == "nullCheck") function.nullCheck = true;
        else if (word == "angles") function.domain = Domain::angles;
        else if (word == "inversion") function.domain = Domain::inversion;
        else if (word == "identity") function.domain = Domain::identity;
        else if (word == "unprojection") function.domain = Domain::unprojection;
        else throw std::logic_error("unknown remark " + word);
    }
    return function;
}

}  // namespace

std::size_t GeometryFunction::dst() const {
    std::size_t index = arguments.size() - 1;
    while (arguments[index].slot != Slot::output && arguments[index].slot != Slot::integer) --index;
    return index;
}

const std::vector<GeometryFunction>& geometryFunctions() {
    static const std::vector<GeometryFunction> functions = [] {
        std::vector<GeometryFunction> all;
        for (const Row& row : rows) {
            all.push_back(make(row));
            all.back().index = all.size() - 1;
        }
        return all;
    }();
    return functions;
}

const GeometryFunction& geometryFunction(std::string_view name) {
    for (const GeometryFunction& function : geometryFunctions())
        if (function.name == name) return function;
    throw std::logic_error("no function " + std::string(name));
}

std::vector<std::string> geometryNames() {
    std::vector<std::string> names;
    for (const GeometryFunction& function : geometryFunctions()) names.push_back(function.name);
    names.emplace_back("kormAffineTransform3DH_mva_32f");
    return names;
}

}  // namespace kormtest
