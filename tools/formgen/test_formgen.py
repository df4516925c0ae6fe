"""Tests of the generator: the grammar over every kind of form the library will have, and its text.

Expected argument lists are written out here in full; none is made by the code under test.
"""

from pathlib import Path
import sys
import unittest

sys.path.insert(0, str(Path(__file__).resolve().parent))

import emit
import header
from fixed import Fixed
from grammar import Core, Departure, Family, Shortcut, Variant, below, up_to

PRODUCT = "src1 src1Width src1Height src2 src2Width src2Height dst count"


def family(operation, operands, signature, **rest):
    return Family(operation, operands, "- L P", signature, "kernel", "", "", **rest)


def arguments(source, name):
    forms = {form.name: form for form in source.forms()}
    return " ".join(argument.name for argument in forms[name].arguments)


class Arguments(unittest.TestCase):
    def expect(self, source, name, expected):
        self.assertEqual(arguments(source, name), " ".join(expected.split()))

    def test_sums(self):
        sums = family("Add", "mam mm tm", "src1 src2 dst width height count")
        self.expect(sums, "kormAdd_mam_32f", """src1 src1ObjectStride src1RowStride src1ElementStride
            src2 src2RowStride src2ElementStride dst dstObjectStride dstRowStride dstElementStride width height count""")
        self.expect(sums, "kormAdd_mam_32f_L", """src1 src1Offset src1RowStride src1ElementStride
            src2 src2RowStride src2ElementStride dst dstOffset dstRowStride dstElementStride width height count""")
        self.expect(sums, "kormAdd_mam_32f_P", """src1 src1Offset src1ObjectStride src2 src2Offset
            dst dstOffset dstObjectStride width height count""")
        self.expect(sums, "kormAdd_mm_32f_P", "src1 src1Offset src2 src2Offset dst dstOffset width height")

    def test_a_single_object_has_no_list_form(self):
        names = [form.name for form in family("Add", "mm mam", "src1 src2 dst width height count").forms()]
        self.assertNotIn("kormAdd_mm_32f_L", names)
        self.assertIn("kormAdd_mam_32f_L", names)

    def test_vectors_and_constants(self):
        vectors = family("Add", "vav", "src1 src2 dst length count")
        self.expect(vectors, "kormAdd_vav_32f_L", """src1 src1Offset src1ElementStride src2 src2ElementStride
            dst dstOffset dstElementStride length count""")
        scaled = family("Add", "vca vac", "src val dst length count")
        self.expect(scaled, "kormAdd_vca_32f_L", """src srcElementStride val valOffset
            dst dstOffset dstElementStride length count""")
        self.expect(scaled, "kormAdd_vca_32f_P", """src srcOffset val valObjectStride
            dst dstOffset dstObjectStride length count""")
        self.expect(scaled, "kormAdd_vac_32f", """src srcObjectStride srcElementStride val
            dst dstObjectStride dstElementStride length count""")

    def test_a_constant_that_comes_first_in_the_name_comes_second_in_the_arguments(self):
        reversed_ = family("Sub", "cva cv cav", "src val dst length count")
        self.expect(reversed_, "kormSub_cva_32f", """src srcObjectStride srcElementStride val
            dst dstObjectStride dstElementStride length count""")
        self.expect(reversed_, "kormSub_cv_32f", "src srcElementStride val dst dstElementStride length")
        form = next(form for form in reversed_.forms() if form.name == "kormSub_cav_64f")
        self.assertEqual(form.formula, "dst(k,j) = val(k) - src(j)")

    def test_sizes_beside_operands(self):
        products = family("Mul", "mam mma", PRODUCT)
        self.expect(products, "kormMul_mam_32f", """src1 src1ObjectStride src1RowStride src1ElementStride
            src1Width src1Height src2 src2RowStride src2ElementStride src2Width src2Height
            dst dstObjectStride dstRowStride dstElementStride count""")
        self.expect(products, "kormMul_mma_64f_P", """src1 src1Offset src1Width src1Height
            src2 src2Offset src2ObjectStride src2Width src2Height dst dstOffset dstObjectStride count""")
        transpose = family("Transpose", "m", "src width height dst count")
        self.expect(transpose, "kormTranspose_m_32f", "src srcRowStride srcElementStride width height dst dstRowStride dstElementStride")

    def test_bare_results(self):
        trace = family("Trace", "ma", "src order dst count", result="scalars")
        self.expect(trace, "kormTrace_ma_32f_L", "src srcOffset srcRowStride srcElementStride order dst count")
        extract = family("Extract", "t", "src dst width height", result="block")
        self.expect(extract, "kormExtract_t_64f_P", "src srcOffset dst width height")

    def test_extras(self):
        lu = family("LUDecomp", "ma", "src pivots dst order count", extras={"pivots": "int32_t *"})
        self.expect(lu, "kormLUDecomp_ma_32f_L", """src srcOffset srcRowStride srcElementStride pivots
            dst dstOffset dstRowStride dstElementStride order count""")
        comb = family("LComb", "vv", "src1 val1 src2 val2 dst length", extras={"val1": "element", "val2": "element"})
        self.expect(comb, "kormLComb_vv_32f", "src1 src1ElementStride val1 src2 src2ElementStride val2 dst dstElementStride length")
        declared = [argument.declare() for argument in next(iter(comb.forms())).arguments]
        self.assertIn("float val1", declared)

    def test_operands_that_the_name_does_not_tell(self):
        gaxpy = family("Gaxpy", "mva", "src1 src1Width src1Height src2 src2Length src3 src3Length dst count",
                       reads={"mva": "mvava"}, result="v")
        self.expect(gaxpy, "kormGaxpy_mva_32f", """src1 src1RowStride src1ElementStride src1Width src1Height
            src2 src2ObjectStride src2ElementStride src2Length src3 src3ObjectStride src3ElementStride src3Length
            dst dstObjectStride dstElementStride""" + " count")
        identity = family("LoadIdentity", "ma", "dst width height count", reads={"ma": ""}, result="m")
        self.expect(identity, "kormLoadIdentity_ma_32f_P", "dst dstOffset dstObjectStride width height count")
        vectors = family("EigenValuesVectors", "ma", "src dstRight dstLeft dstValuesRe dstValuesIm order count buffer",
                         results="dstRight dstLeft",
                         extras={"dstValuesRe": "element *", "dstValuesIm": "element *", "buffer": "element *"})
        self.expect(vectors, "kormEigenValuesVectors_ma_32f_L", """src srcOffset srcRowStride srcElementStride
            dstRight dstRightOffset dstRightRowStride dstRightElementStride
            dstLeft dstLeftOffset dstLeftRowStride dstLeftElementStride dstValuesRe dstValuesIm order count buffer""")

    def test_layout_pairs(self):
        copy = Family("Copy", "ma", "PS SL", "src dst width height count", "copy", "", "")
        self.expect(copy, "kormCopy_ma_32f_PS", """src srcOffset srcObjectStride
            dst dstObjectStride dstRowStride dstElementStride width height count""")
        self.expect(copy, "kormCopy_ma_32f_SL", """src srcObjectStride srcRowStride srcElementStride
            dst dstOffset dstRowStride dstElementStride width height count""")
        self.expect(copy, "kormCopy_ma_64f_SL", arguments(copy, "kormCopy_ma_32f_SL"))

    def test_a_result_whose_descriptor_has_another_name(self):
        vectors = family("EigenValuesVectorsSym", "m ma", "src buffer dstVectors dstValues order count", results="dstVectors:dst",
                         extras={"buffer": "element *", "dstValues": "element *"})
        self.expect(vectors, "kormEigenValuesVectorsSym_ma_32f", """src srcObjectStride srcRowStride srcElementStride buffer
            dstVectors dstObjectStride dstRowStride dstElementStride dstValues order count""")
        self.expect(vectors, "kormEigenValuesVectorsSym_m_64f_P", "src srcOffset buffer dstVectors dstOffset dstValues order")

    def test_no_result_with_a_descriptor(self):
        values = family("EigenValues", "ma", "src dstValuesRe dstValuesIm order count buffer", results="",
                        extras={"dstValuesRe": "element *", "dstValuesIm": "element *", "buffer": "element *"})
        self.expect(values, "kormEigenValues_ma_32f_P", "src srcOffset srcObjectStride dstValuesRe dstValuesIm order count buffer")

    def test_a_word_that_names_nothing_is_refused(self):
        with self.assertRaisesRegex(ValueError, "kormAdd_mm_32f: the signature's word 'lenght' names nothing"):
            list(family("Add", "mm", "src1 src2 dst lenght").forms())


class Checks(unittest.TestCase):
    def orders(self, source):
        return {form.stem_and_suffix: " ".join(check.letter for check in form.checks) for form in source.forms()}

    def lines(self, source, name):
        return list(emit.check_lines(next(form for form in source.forms() if form.name == name)))

    def test_general_orders(self):
        orders = self.orders(family("Add", "mat mm", "src1 src2 dst width height count"))
        self.assertEqual(orders["Add_mat_32f"], "N C S T")
        self.assertEqual(orders["Add_mat_32f_L"], "N C S T O")
        self.assertEqual(orders["Add_mm_64f_P"], "N S O")

    def test_a_departure_covers_its_forms_alone(self):
        rows = [Departure("Add_vav_??f_P", "N S T C O", "count late")]
        orders = self.orders(family("Add", "vav", "src1 src2 dst length count", order_departures=rows))
        self.assertEqual(orders["Add_vav_64f_P"], "N S T C O")
        self.assertEqual(orders["Add_vav_64f"], "N C S T")

    def test_an_order_for_all_layouts(self):
        orders = self.orders(family("Extract", "ta t", "src dst width height count", result="block", order="N S C O T"))
        self.assertEqual(orders["Extract_ta_32f"], "N S C T")
        self.assertEqual(orders["Extract_ta_32f_L"], "N S C O T")
        self.assertEqual(orders["Extract_ta_32f_P"], "N S C O T")
        self.assertEqual(orders["Extract_t_32f"], "N S T")
        self.assertEqual(orders["Extract_t_32f_P"], "N S O")

    def test_sizes_may_come_first(self):
        rows = [Departure("Extract_v_64f_P", "S N O", "the size first")]
        extract = family("Extract", "v", "src dst length", result="block", order_departures=rows)
        self.assertEqual(self.lines(extract, "kormExtract_v_64f_P"), [
            "    if (anyBelowOne(length)) return korStatusBadSize;",
            "    if (anyNull(src, dst)) return korStatusNullPointer;",
            "    if (anyBadOffset<double>(srcOffset)) return korStatusBadOffset;"])
        self.assertEqual(self.orders(extract)["Extract_v_32f_P"], "N S O")

    def test_no_sizes(self):
        cross = family("CrossProduct", "vava vv", "src1 src2 dst count")
        self.assertEqual(self.orders(cross)["CrossProduct_vava_64f_L"], "N C T O")
        self.assertEqual(self.orders(cross)["CrossProduct_vv_32f_P"], "N O")

    def test_a_match_of_sizes_that_stand_at_the_end(self):
        factor = family("QRDecomp", "ma m", "src buffer dst width height count", extras={"buffer": "element *"},
                        match="width <= height", order="N C S T O M")
        self.assertEqual(self.orders(factor)["QRDecomp_ma_32f_L"], "N C S T O M")
        self.assertEqual(self.orders(factor)["QRDecomp_m_32f_P"], "N S O M")
        self.assertEqual(self.lines(factor, "kormQRDecomp_m_32f"), [
            "    if (anyNull(src, buffer, dst)) return korStatusNullPointer;",
            "    if (anyBelowOne(width, height)) return korStatusBadSize;",
            "    if (anyBadStride<float>(\n            srcRowStride, srcElementStride, dstRowStride, "
            "dstElementStride)) return korStatusBadStride;",
            "    if (!(width <= height)) return korStatusSizeMismatch;"])

    def test_several_matches(self):
        gaxpy = family("Gaxpy", "mv", "src1 src1Width src1Height src2 src2Length src3 src3Length dst", reads={"mv": "mvv"},
                       result="v", match="src1Width == src2Length && src1Height == src3Length", order="N C S M T O")
        form = next(gaxpy.forms())
        self.assertEqual([check.names for check in form.checks if check.letter == "M"],
                         [["src1Width", "src1Height", "src2Length", "src3Length"]])
        self.assertIn("    if (!(src1Width == src2Length && src1Height == src3Length)) return korStatusSizeMismatch;",
                      self.lines(gaxpy, "kormGaxpy_mv_32f_P"))

    def test_a_check_may_be_of_one_operand(self):
        source = family("EigenValuesVectors", "ma", "src dstRight dstLeft order count", results="dstRight dstLeft",
                        order="N S C O:src T:src O:dstRight T:dstRight O:dstLeft T:dstLeft")
        self.assertEqual(self.lines(source, "kormEigenValuesVectors_ma_64f_P"), [
            "    if (anyNull(src, dstRight, dstLeft)) return korStatusNullPointer;",
            "    if (anyBelowOne(order)) return korStatusBadSize;",
            "    if (anyBelowOne(count)) return korStatusBadCount;",
            "    if (anyBadOffset<double>(srcOffset)) return korStatusBadOffset;",
            "    if (anyBadStride<double>(srcObjectStride)) return korStatusBadStride;",
            "    if (anyBadOffset<double>(dstRightOffset)) return korStatusBadOffset;",
            "    if (anyBadStride<double>(dstRightObjectStride)) return korStatusBadStride;",
            "    if (anyBadOffset<double>(dstLeftOffset)) return korStatusBadOffset;",
            "    if (anyBadStride<double>(dstLeftObjectStride)) return korStatusBadStride;"])

    def test_an_operand_is_checked_by_its_whole_name(self):
        source = family("X", "m", "src dst dstLeft order", results="dst dstLeft", order="T:dst T:dstLeft T:src")
        form = next(source.forms())
        self.assertEqual([check.names for check in form.checks], [
            ["dstRowStride", "dstElementStride"], ["dstLeftRowStride", "dstLeftElementStride"], ["srcRowStride", "srcElementStride"]])

    def test_an_operand_that_is_not_there_is_refused(self):
        source = family("X", "m", "src dst order", order="N S T:scr")
        with self.assertRaisesRegex(ValueError, "kormX_m_32f: there is no operand 'scr' to check"):
            self.orders(source)

    def test_distances_between_objects_are_looked_at_where_there_is_more_than_one(self):
        rows = [Departure("Copy_va_32f_SP", "N S C O T:inner T:objects", "offsets first")]
        copy = Family("Copy", "va", "SS SP LL PP", "src dst length count", "copy", "", "",
                      order="N S C T:inner O T:objects", order_departures=rows)
        self.assertEqual(self.lines(copy, "kormCopy_va_32f_SS"), [
            "    if (anyNull(src, dst)) return korStatusNullPointer;",
            "    if (anyBelowOne(length)) return korStatusBadSize;",
            "    if (anyBelowOne(count)) return korStatusBadCount;",
            "    if (anyBadStride<float>(srcElementStride, dstElementStride)) return korStatusBadStride;",
            "    if (count > 1 && anyBadStride<float>(srcObjectStride, dstObjectStride)) return korStatusBadStride;"])
        self.assertEqual(self.lines(copy, "kormCopy_va_32f_SP")[3:], [
            "    if (anyBadOffset<float>(dstOffset)) return korStatusBadOffset;",
            "    if (anyBadStride<float>(srcElementStride)) return korStatusBadStride;",
            "    if (count > 1 && anyBadStride<float>(srcObjectStride, dstObjectStride)) return korStatusBadStride;"])
        self.assertEqual(self.lines(copy, "kormCopy_va_64f_LL")[3:], [
            "    if (anyBadStride<double>(srcElementStride, dstElementStride)) return korStatusBadStride;",
            "    if (anyBadOffset<double>(srcOffset, dstOffset)) return korStatusBadOffset;"])
        self.assertEqual(self.lines(copy, "kormCopy_va_64f_PP")[3:], [
            "    if (anyBadOffset<double>(srcOffset, dstOffset)) return korStatusBadOffset;",
            "    if (count > 1 && anyBadStride<double>(srcObjectStride, dstObjectStride)) return korStatusBadStride;"])

    def test_words_of_the_documentation(self):
        copy = Family("Copy", "ma", "SP", "src dst width height count", "copy", "", "", formula="formula",
                      order="N S C T:inner O:dst T:objects")
        self.assertIn(" * Checks: null, size, count, stride within an object, offset of dst, "
                      "stride between objects, if count is above 1.\n", header.function(next(copy.forms())))


class Drivers(unittest.TestCase):
    def driver(self, source, name):
        return emit.driver_function(next(form for form in source.forms() if form.name == name))

    def test_scratch_and_statuses(self):
        limits = {(layout, "32f"): below(100) for layout in ("standard", "list", "pointer")}
        invert = family("Invert", "ma", "src dst order buffer count", extras={"buffer": "element *"},
                        scratch={"buffer": "order * order + order"}, merges_status=True, limits=limits)
        self.assertEqual(self.driver(invert, "kormInvert_ma_32f_P"), """\
[[gnu::noinline]] int32_t v8_ownOMP_kormInvert_ma_32f_P(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstObjectStride, int32_t order, float *buffer, int32_t count) {
    const std::size_t pieceSize = sizeof(float) * (static_cast<std::size_t>(order) * static_cast<std::size_t>(order) + static_cast<std::size_t>(order));
    return forEachRun(count, Statuses::merged, Scratch{pieceSize, buffer}, [=](Run run, void* piece) {
        return v8_ownkormInvert_ma_32f_P(
            src, shiftedOffset(srcOffset, run.first, srcObjectStride), srcObjectStride, dst,
            shiftedOffset(dstOffset, run.first, dstObjectStride), dstObjectStride, order,
            static_cast<float*>(piece), run.count);
    });
}""")

    def test_scratch_of_any_name_and_size(self):
        limits = {("standard", "64f"): below(2801)}
        solve = family("QRBackSubst", "mva", "src1 workspace src2 dst width height count", extras={"workspace": "element *"},
                       result="v", scratch={"workspace": "height"}, limits=limits)
        text = self.driver(solve, "kormQRBackSubst_mva_64f")
        self.assertIn("    const std::size_t pieceSize = sizeof(double) * (static_cast<std::size_t>(height));\n", text)
        self.assertIn("forEachRun(count, Statuses::none, Scratch{pieceSize, workspace}, [=](Run run, void* piece) {", text)
        self.assertIn("src1, src1RowStride, src1ElementStride, static_cast<double*>(piece),", text)

    def test_a_merged_status_without_scratch_names_no_piece(self):
        limits = {(layout, "32f"): below(100) for layout in ("standard", "list", "pointer")}
        lu = family("LUDecomp", "ma", "src dst order count", merges_status=True, limits=limits)
        self.assertIn("forEachRun(count, Statuses::merged, Scratch{}, [=](Run run, void*) {", self.driver(lu, "kormLUDecomp_ma_32f"))

    def test_shifts(self):
        limits = {(layout, "64f"): below(100) for layout in ("standard", "list", "pointer")}
        lu = family("LUDecomp", "ma", "src pivots dst order count", extras={"pivots": "int32_t *"},
                    per_object={"pivots": "order"}, merges_status=True, limits=limits)
        self.assertIn("shifted(src, run.first, srcObjectStride)", self.driver(lu, "kormLUDecomp_ma_64f"))
        self.assertIn("shiftedElements(pivots, run.first, order)", self.driver(lu, "kormLUDecomp_ma_64f"))
        self.assertIn("shiftedList(dst, run.first), dstOffset", self.driver(lu, "kormLUDecomp_ma_64f_L"))
        self.assertIn("src, shiftedOffset(srcOffset, run.first, srcObjectStride)", self.driver(lu, "kormLUDecomp_ma_64f_P"))
        trace = family("Trace", "ma", "src order dst count", result="scalars", limits=limits)
        for name in ("kormTrace_ma_64f", "kormTrace_ma_64f_L", "kormTrace_ma_64f_P"):
            self.assertIn("shiftedElements(dst, run.first)", self.driver(trace, name))
        vectors = family("EigenValuesVectorsSym", "ma", "src dstVectors dstValues order count", results="dstVectors:dst",
                         extras={"dstValues": "element *"}, per_object={"dstValues": "order"}, limits=limits)
        self.assertIn("""
            shifted(dstVectors, run.first, dstObjectStride), dstObjectStride, dstRowStride, dstElementStride,
            shiftedElements(dstValues, run.first, order), order, run.count);""", self.driver(vectors, "kormEigenValuesVectorsSym_ma_64f"))

    def test_limits_of_forms_with_two_layouts(self):
        limits = {("standard list", "32f"): below(100), ("standard pointer", "32f"): up_to(200)}
        copy = Family("Copy", "va", "SL SP SS", "src dst length count", "copy", "", "", limits=limits)
        self.assertEqual({form.name: form.limit for form in copy.forms() if form.element == "32f"},
                         {"kormCopy_va_32f_SL": below(100), "kormCopy_va_32f_SP": up_to(200), "kormCopy_va_32f_SS": None})

    def test_estimates_of_any_sizes(self):
        gaxpy = family("Gaxpy", "mva", "src1 src1Width src1Height src2 src2Length src3 src3Length dst count", reads={"mva": "mvava"},
                       result="v", letters={"W": "src1Width", "H": "src1Height"}, estimate="(W + 2 * H) * count")
        self.assertEqual(emit.estimate(next(gaxpy.forms())), "const Estimate estimate = (Estimate(src1Width) + "
                         "2 * Estimate(src1Height)) * Estimate(count);")


class Kernels(unittest.TestCase):
    def form(self, source, name):
        return next(form for form in source.forms() if form.name == name)

    def test_a_square_operand_has_as_many_table_entries_a_row_as_its_order(self):
        solve = family("LUBackSubst", "mava", "src1 pivots src2 dst order count", result="v", extras={"pivots": "const int32_t *"})
        form = self.form(solve, "kormLUBackSubst_mava_32f_P")
        text = emit.kernel_function(form, form.kernels[0])
        self.assertIn("scatteredArray(src1, src1Offset, src1ObjectStride, order)", text)
        self.assertIn("scatteredArray(dst, dstOffset, dstObjectStride, order),\n        pivots,\n        order, count)", text)

    def test_a_bare_result_is_handed_on_as_it_is(self):
        det = family("Det", "ma", "src order buffer dst count", result="scalars", extras={"buffer": "element *"})
        form = self.form(det, "kormDet_ma_64f_L")
        text = emit.kernel_function(form, form.kernels[0])
        self.assertIn("plainList(src, srcOffset, srcRowStride),\n        dst,\n        buffer,\n        order, count)", text)

    def test_a_formula_of_whole_objects(self):
        norm = Family("Norm", "v va", "-", "src dst length count", "norm", "", "", formula="{dst.object} = norm of {src.object}",
                      result="scalars")
        self.assertEqual([form.formula for form in norm.forms() if form.element == "32f"],
                         ["dst = norm of src", "dst(k) = norm of src(k)"])

    def test_kernels_are_named_by_both_layouts(self):
        copy = Family("Copy", "ma", "SS PS PL PP", "src dst width height count", "copy", "", "")
        self.assertEqual({form.name: form.kernels for form in copy.forms() if form.element == "32f"}, {
            "kormCopy_ma_32f_SS": ["v8_ownkormCopy_ma_32f_SS", "v8_ownkormCopy_ma_32f_SSS2"],
            "kormCopy_ma_32f_PS": ["v8_ownkormCopy_ma_32f_PS", "v8_ownkormCopy_ma_32f_PSS2"],
            "kormCopy_ma_32f_PL": ["v8_ownkormCopy_ma_32f_PL", "v8_ownkormCopy_ma_32f_PLS2"],
            "kormCopy_ma_32f_PP": ["v8_ownkormCopy_ma_32f_PP"]})

    def test_a_form_with_two_layouts_in_full(self):
        copy = Family("Copy", "ma", "PL", "src dst width height count", "copy", "", "", order="N S C T:inner O T:objects")
        self.assertEqual("\n\n".join(emit.functions(self.form(copy, "kormCopy_ma_32f_PL"))), """\
[[gnu::noinline]] int32_t v8_ownkormCopy_ma_32f_PL(
    const float *const *src, std::ptrdiff_t srcOffset, int32_t srcObjectStride, float *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t /*dstElementStride*/, int32_t width, int32_t height,
    int32_t count) {
    copy(
        scatteredArray(src, srcOffset, srcObjectStride, width),
        plainList(dst, dstOffset, dstRowStride),
        MatrixShape{width, height}, count);
    return korStatusOk;
}

[[gnu::noinline]] int32_t v8_ownkormCopy_ma_32f_PLS2(
    const float *const *src, std::ptrdiff_t srcOffset, int32_t srcObjectStride, float *const *dst,
    int32_t dstOffset, int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height,
    int32_t count) {
    copy(
        scatteredArray(src, srcOffset, srcObjectStride, width),
        stridedList(dst, dstOffset, dstRowStride, dstElementStride),
        MatrixShape{width, height}, count);
    return korStatusOk;
}

int32_t v8_kormCopy_ma_32f_PL(
    const float *const *src, int32_t srcOffset, int32_t srcObjectStride, float *const *dst, int32_t dstOffset,
    int32_t dstRowStride, int32_t dstElementStride, int32_t width, int32_t height, int32_t count) {
    if (anyNull(src, dst)) return korStatusNullPointer;
    if (anyBelowOne(width, height)) return korStatusBadSize;
    if (anyBelowOne(count)) return korStatusBadCount;
    if (anyBadStride<float>(dstRowStride, dstElementStride)) return korStatusBadStride;
    if (anyBadOffset<float>(srcOffset, dstOffset)) return korStatusBadOffset;
    if (count > 1 && anyBadStride<float>(srcObjectStride)) return korStatusBadStride;
    if (allAdjacent<float>(dstElementStride)) {
        return v8_ownkormCopy_ma_32f_PL(
            src, srcOffset, srcObjectStride, dst, dstOffset, dstRowStride, dstElementStride, width, height,
            count);
    }
    return v8_ownkormCopy_ma_32f_PLS2(
        src, srcOffset, srcObjectStride, dst, dstOffset, dstRowStride, dstElementStride, width, height,
        count);
}""")

    def test_an_entry_function_that_does_the_work_itself(self):
        copy = Family("Copy", "va", "SP", "src dst length count", "copy", "", "", order="N S C T:inner O T:objects",
                      entry_only=True)
        form = self.form(copy, "kormCopy_va_64f_SP")
        self.assertEqual(form.kernels, [])
        self.assertEqual(emit.functions(form), ["""\
int32_t v8_kormCopy_va_64f_SP(
    const double *src, int32_t srcObjectStride, int32_t srcElementStride, double *const *dst,
    int32_t dstOffset, int32_t dstObjectStride, int32_t length, int32_t count) {
    if (anyNull(src, dst)) return korStatusNullPointer;
    if (anyBelowOne(length)) return korStatusBadSize;
    if (anyBelowOne(count)) return korStatusBadCount;
    if (anyBadStride<double>(srcElementStride)) return korStatusBadStride;
    if (anyBadOffset<double>(dstOffset)) return korStatusBadOffset;
    if (count > 1 && anyBadStride<double>(srcObjectStride, dstObjectStride)) return korStatusBadStride;
    copy(
        stridedArray(src, srcObjectStride, noRows, srcElementStride),
        scatteredArray(dst, dstOffset, dstObjectStride, length),
        VectorShape{length}, count);
    return korStatusOk;
}"""])

    def test_an_array_form_without_driver_chooses_by_element_strides(self):
        transpose = family("Transpose", "ma", "src width height dst count", result_width="height")
        (entry,) = emit.entry_functions(self.form(transpose, "kormTranspose_ma_32f"))
        self.assertTrue(entry.endswith("""\
    if (allAdjacent<float>(srcElementStride, dstElementStride)) {
        return v8_ownkormTranspose_ma_32f(
            src, srcObjectStride, srcRowStride, srcElementStride, width, height, dst, dstObjectStride,
            dstRowStride, dstElementStride, count);
    }
    return v8_ownkormTranspose_ma_32f_S2(
        src, srcObjectStride, srcRowStride, srcElementStride, width, height, dst, dstObjectStride,
        dstRowStride, dstElementStride, count);
}"""), entry)
        form = self.form(transpose, "kormTranspose_ma_32f_P")
        text = emit.kernel_function(form, form.kernels[0])
        self.assertIn("scatteredArray(src, srcOffset, srcObjectStride, width),\n"
                      "        scatteredArray(dst, dstOffset, dstObjectStride, height),\n", text)

    def test_one_kernel_for_any_element_stride(self):
        values = family("EigenValues", "ma m", "src dstValuesRe dstValuesIm order count buffer", results="",
                        extras={"dstValuesRe": "element *", "dstValuesIm": "element *", "buffer": "element *"},
                        single_kernel=True)
        form = self.form(values, "kormEigenValues_ma_32f_L")
        self.assertEqual(form.kernels, ["v8_ownkormEigenValues_ma_32f_L"])
        self.assertIn("stridedList(src, srcOffset, srcRowStride, srcElementStride),\n        dstValuesRe,\n        dstValuesIm,\n"
                      "        buffer,\n        order, count);", emit.kernel_function(form, form.kernels[0]))
        (entry,) = emit.entry_functions(self.form(values, "kormEigenValues_m_64f"))
        self.assertNotIn("allAdjacent", entry)
        self.assertIn("return v8_ownkormEigenValues_m_64f(", entry)

    def test_every_view(self):
        def views(source, name):
            form = self.form(source, name)
            return [[emit.view(form, operand, form.is_plain(kernel)) for operand in form.operands.values()] for kernel in form.kernels]

        matrices = family("Add", "tam m", "src1 src2 dst width height count", reads={"m": "mm"})
        self.assertEqual(views(matrices, "kormAdd_tam_32f"), [
            ["transposed(plainArray(src1, src1ObjectStride, src1RowStride))", "plain(src2, src2RowStride)",
             "plainArray(dst, dstObjectStride, dstRowStride)"],
            ["transposed(stridedArray(src1, src1ObjectStride, src1RowStride, src1ElementStride))",
             "strided(src2, src2RowStride, src2ElementStride)",
             "stridedArray(dst, dstObjectStride, dstRowStride, dstElementStride)"]])
        self.assertEqual(views(matrices, "kormAdd_tam_32f_L")[1], [
            "transposed(stridedList(src1, src1Offset, src1RowStride, src1ElementStride))",
            "strided(src2, src2RowStride, src2ElementStride)", "stridedList(dst, dstOffset, dstRowStride, dstElementStride)"])
        self.assertEqual(views(matrices, "kormAdd_tam_32f_P"), [[
            "transposed(scatteredArray(src1, src1Offset, src1ObjectStride, height))", "scattered(src2, src2Offset, width)",
            "scatteredArray(dst, dstOffset, dstObjectStride, width)"]])
        vectors = family("Add", "vca vac", "src val dst length count")
        self.assertEqual(views(vectors, "kormAdd_vca_64f"), [
            ["plain(src, noRows)", "constantArray(val, valObjectStride)", "plainArray(dst, dstObjectStride, noRows)"],
            ["strided(src, noRows, srcElementStride)", "constantArray(val, valObjectStride)",
             "stridedArray(dst, dstObjectStride, noRows, dstElementStride)"]])
        self.assertEqual(views(vectors, "kormAdd_vca_64f_L")[0], [
            "plain(src, noRows)", "constantList(val, valOffset)", "plainList(dst, dstOffset, noRows)"])
        self.assertEqual(views(vectors, "kormAdd_vac_64f_P"), [[
            "scatteredArray(src, srcOffset, srcObjectStride, length)", "constant(val)",
            "scatteredArray(dst, dstOffset, dstObjectStride, length)"]])

    def test_a_packed_block_is_handed_on_as_it_is(self):
        extract = family("Extract", "ta", "src dst width height count", result="block")
        form = self.form(extract, "kormExtract_ta_32f_P")
        self.assertIn("transposed(scatteredArray(src, srcOffset, srcObjectStride, height)),\n        dst,\n"
                      "        MatrixShape{width, height}, count);", emit.kernel_function(form, form.kernels[0]))

    def test_a_shortcut_stands_between_checks_and_estimate(self):
        limits = {("standard", "32f"): below(100)}
        invert = family("Invert", "ma m", "src dst order count", estimate="order * count", limits=limits,
                        shortcut=Shortcut("order == 1", "numbers"))
        array = "\n".join(emit.entry_functions(self.form(invert, "kormInvert_ma_32f")))
        places = [array.index(text) for text in ("korStatusBadStride", "if (order == 1)", "numbers(", "const Estimate", "v8_ownOMP")]
        self.assertEqual(places, sorted(places))
        strided, plain = emit.entry_functions(self.form(invert, "kormInvert_m_32f"))
        for text in (strided, plain):
            self.assertLess(text.index("korStatusBadStride"), text.index("if (order == 1)"))
            self.assertLess(text.index("if (order == 1)"), text.index("return v8_ownkormInvert_m_32f"))

    def test_a_light_entry_function_holds_both_roads(self):
        sums = family("Add", "mm", "src1 src2 dst width height", light=True)
        (entry,) = emit.entry_functions(self.form(sums, "kormAdd_mm_32f"))
        general, plain = entry.split("\n    }\n", 1)
        self.assertIn("if (!allAdjacent<float>(src1ElementStride, src2ElementStride, dstElementStride)) {", general)
        self.assertIn("return v8_ownkormAdd_mm_32f_S2(", general)
        self.assertIn("return v8_ownkormAdd_mm_32f(", plain)
        for road in (general, plain):
            places = [road.index(text) for text in ("korStatusNullPointer", "korStatusBadSize", "korStatusBadStride")]
            self.assertEqual(places, sorted(places))
        self.assertIn("if (anyBadStride<float>(src1RowStride, src2RowStride, dstRowStride)) {\n"
                      "        return anyBelowOne(width, height) ? korStatusBadSize : korStatusBadStride;\n    }", plain)

    def test_a_light_kernel_for_any_stride_is_called_where_registers_hold_its_arguments(self):
        matrices = family("Add", "mm", "src1 src2 dst width height", light=True)
        vectors = family("Add", "vv", "src1 src2 dst length", light=True)
        called = {}
        for group in (matrices, vectors):
            for form in group.forms():
                for kernel in form.kernels:
                    called[kernel] = emit.kernel_function(form, kernel).startswith("[[gnu::noinline]]")
        self.assertFalse(called["v8_ownkormAdd_mm_32f"])
        self.assertFalse(called["v8_ownkormAdd_mm_32f_S2"])
        self.assertTrue(called["v8_ownkormAdd_mm_32f_P"])
        self.assertFalse(called["v8_ownkormAdd_vv_64f"])
        self.assertTrue(called["v8_ownkormAdd_vv_64f_S2"])

    def test_a_light_entry_function_of_vectors_has_no_strides_left_to_check(self):
        sums = family("Add", "vv", "src1 src2 dst length", light=True)
        (entry,) = emit.entry_functions(self.form(sums, "kormAdd_vv_64f"))
        plain = entry.split("\n    }\n", 1)[1]
        self.assertNotIn("anyBadStride", plain)
        self.assertIn("if (anyNull(src1, src2, dst)) return korStatusNullPointer;", plain)


class FixedSizes(unittest.TestCase):
    POINTERS = {"src": "const float *", "src1": "const float *", "src2": "const float *", "dst": "float *", "val": "float"}

    def forms(self, operation, operands, signature, kernel, **rest):
        types = {**self.POINTERS, **rest.pop("more", {})}
        row = Fixed(operation, operands, signature, kernel, "fixed.h", "group", "formula", types, **rest)
        return {form.name: form for form in row.forms()}

    def test_arguments_are_what_the_signature_spells_out(self):
        scale = self.forms("MulC", "v2 v3 v4", "src val dst", "scale<{n}>")
        self.assertEqual(list(scale), ["kormMulC_v2_32f", "kormMulC_v3_32f", "kormMulC_v4_32f"])
        self.assertEqual(emit.c_declarations(scale["kormMulC_v3_32f"]), ["const float *src", "float val", "float *dst"])

    def test_a_word_without_a_type_is_refused(self):
        with self.assertRaisesRegex(ValueError, "kormAdd_v2_32f: the signature's word 'scr2' has no type"):
            self.forms("Add", "v2", "src1 scr2 dst", "add<{n}>")

    def test_the_function_is_nothing_but_its_arithmetic(self):
        add = self.forms("Add", "v3", "src1 src2 dst", "add<{n}>")["kormAdd_v3_32f"]
        self.assertEqual(emit.functions(add), ["""\
[[gnu::flatten, gnu::aligned(64)]] int32_t v8_kormAdd_v3_32f(
    const float *src1, const float *src2, float *dst) {
    add<3>(src1, src2, dst);
    return korStatusOk;
}"""])

    def test_the_size_is_that_of_the_vector_in_the_word(self):
        strides = {"srcStride": "int32_t", "dstStride": "int32_t", "count": "int32_t"}
        batch = self.forms("Move", "m4v2a m4v3", "src srcStride dst dstStride count", "move<{n}>", more=strides)
        self.assertEqual([form.kernel for form in batch.values()], ["move<2>", "move<3>"])
        self.assertEqual([list(form.checks) for form in batch.values()], [[], []])

    def test_a_status_of_its_own(self):
        invert = self.forms("Invert", "m4", "src dst", "invert", fails=True)["kormInvert_m4_32f"]
        self.assertIn("    return invert(src, dst);\n}", emit.functions(invert)[0])

    def test_a_check_of_pointers(self):
        product = self.forms("Mul", "mm4x4", "src1 src2 dst", "multiply", checks="N")["kormMul_mm4x4_32f"]
        self.assertIn("if (anyNull(src1, src2, dst)) return korStatusNullPointer;", emit.functions(product)[0])
        product.family.checks = "T"
        with self.assertRaisesRegex(ValueError, "there is nothing for a check 'T'"):
            list(product.checks)

    def test_a_query_of_a_size(self):
        queries = self.forms("EigenValuesGetBufSize", "-", "order size", "generalBufferSize<{scalar}>", checks="N S",
                             types="32f 64f", more={"order": "int32_t", "size": "uint32_t *"})
        self.assertEqual(list(queries), ["kormEigenValuesGetBufSize_32f", "kormEigenValuesGetBufSize_64f"])
        self.assertEqual(emit.functions(queries["kormEigenValuesGetBufSize_64f"]), ["""\
[[gnu::flatten, gnu::aligned(64)]] int32_t v8_kormEigenValuesGetBufSize_64f(int32_t order, uint32_t *size) {
    if (anyNull(size)) return korStatusNullPointer;
    if (anyBelowOne(order)) return korStatusBadSize;
    generalBufferSize<double>(order, size);
    return korStatusOk;
}"""])

    def test_arrays_without_sizes_of_their_own(self):
        limits = {("standard", "32f"): below(100)}
        transform = Family("T", "mva", "-", "src1 src2 dst count", "transform", "", "", types="32f", result="v",
                           merges_status=True, estimate="6 * count", limits=limits, formula="formula")
        form = next(transform.forms())
        self.assertEqual(" ".join(check.letter for check in form.checks), "N C T")
        self.assertIn("plainArray(dst, dstObjectStride, noRows),\n        count);", emit.kernel_function(form, form.kernels[0]))
        self.assertIn("Statuses::merged, Scratch{}, [=](Run run, void*) {", emit.driver_function(form))


class Sources(unittest.TestCase):
    def test_functions_stand_in_the_namespace_of_their_kernels(self):
        types = {"src": "const float *", "dst": "float *"}
        rows = [Fixed("Len", "v2", "src dst", "length<{n}>", "geometry/vectors.h", "g", "the length", types),
                Fixed("Norm", "v2", "src dst", "norm<{n}>", "linalg/norms.h", "g", "the norm", types)]
        self.assertEqual(emit.source([form for row in rows for form in row.forms()]), """\
// Written by tools/formgen from the tables of forms; edit those instead.

#include "entry/checks.h"
#include "entry/variant.h"
#include "geometry/vectors.h"
#include "linalg/norms.h"

namespace korm::inline KORM_VARIANT::geometry {
extern "C" {

// --- kormLen_v2_32f: the length

[[gnu::flatten, gnu::aligned(64)]] int32_t v8_kormLen_v2_32f(const float *src, float *dst) {
    length<2>(src, dst);
    return korStatusOk;
}

}  // extern "C"
}  // namespace korm::inline KORM_VARIANT::geometry

namespace korm::inline KORM_VARIANT::linalg {
extern "C" {

// --- kormNorm_v2_32f: the norm

[[gnu::flatten, gnu::aligned(64)]] int32_t v8_kormNorm_v2_32f(const float *src, float *dst) {
    norm<2>(src, dst);
    return korStatusOk;
}

}  // extern "C"
}  // namespace korm::inline KORM_VARIANT::linalg
""")


class Cores(unittest.TestCase):
    """Functions that kernels share: declared and defined from one row."""

    LU = Core("LU of any order.", "luGeneral<{scalar}>", "const {object}<const {scalar}>& src, std::byte* pivots",
              "ownkormLUDecomp_m_{element}{layout}_com", "linalg/lu_general.h", types="64f",
              each=({"object": "PlainObject", "layout": "_S"}, {"object": "TableObject", "layout": "_P"}))
    DET = Core("Determinants.", "determinant<{n}>", "const {scalar}* src, {scalar}* dst", "a6_Det_m_{element}_{n}x{n}",
               "linalg/extended.h", returns="void", each=({"n": 3},))

    def test_declarations(self):
        self.assertEqual(emit.cores_header("linalg", [self.LU, self.DET]), """\
// Written by tools/formgen from the tables of forms; edit those instead.
#pragma once

#include <cstddef>
#include <cstdint>

#include "entry/variant.h"
#include "entry/views.h"

namespace korm::inline KORM_VARIANT::linalg::cores {

// LU of any order.
[[gnu::noinline]] std::int32_t luGeneral(
    const PlainObject<const double>& src, std::byte* pivots) asm(KORM_SYMBOL("ownkormLUDecomp_m_64f_S_com"));
[[gnu::noinline]] std::int32_t luGeneral(
    const TableObject<const double>& src, std::byte* pivots) asm(KORM_SYMBOL("ownkormLUDecomp_m_64f_P_com"));

// Determinants.
template <int>
void determinant(const float* src, float* dst);
template <int>
void determinant(const double* src, double* dst);
template <>
[[gnu::noinline]] void determinant<3>(
    const float* src, float* dst) asm(KORM_SYMBOL("a6_Det_m_32f_3x3"));
template <>
[[gnu::noinline]] void determinant<3>(
    const double* src, double* dst) asm(KORM_SYMBOL("a6_Det_m_64f_3x3"));

}  // namespace korm::inline KORM_VARIANT::linalg::cores
""")

    def test_definitions(self):
        self.assertEqual(emit.cores_source("linalg", [self.LU, self.DET]), """\
// Written by tools/formgen from the tables of forms; edit those instead.

#include "linalg/cores.h"
#include "linalg/extended.h"
#include "linalg/lu_general.h"

namespace korm::inline KORM_VARIANT::linalg::cores {

std::int32_t luGeneral(const PlainObject<const double>& src, std::byte* pivots) {
    return linalg::luGeneral<double>(src, pivots);
}

std::int32_t luGeneral(const TableObject<const double>& src, std::byte* pivots) {
    return linalg::luGeneral<double>(src, pivots);
}

template <>
void determinant<3>(const float* src, float* dst) {
    return linalg::determinant<3>(src, dst);
}

template <>
void determinant<3>(const double* src, double* dst) {
    return linalg::determinant<3>(src, dst);
}

}  // namespace korm::inline KORM_VARIANT::linalg::cores
""")


class Products(unittest.TestCase):
    """Sizes beside operands: matches, letters for sizes, a kernel template with arguments of a kernel's own."""

    def form(self, name, **rest):
        rows = [Variant("tam_32f_L* tam_32f_S2", "first"), Variant("*", "second")]
        limits = {("standard", "32f"): below(100), ("pointer", "32f"): below(100)}
        source = family("Mul", "tam mv", PRODUCT, letters={"M": "src1Width", "K": "src1Height", "N": "src2Width"},
                        shape="Shape{M, K, N}", result_width="N", match="src1Height == src2Height", variants=rows,
                        estimate="K * N + M * count", limits=limits, formula="{dst[i,j]} = {src1[i,l]} * {src2[l,j]}",
                        order="N C S M T O", **rest)
        source.kernel = "product<{}>"
        return next(form for form in source.forms() if form.name == name)

    def test_formula(self):
        self.assertEqual(self.form("kormMul_tam_32f").formula, "dst(k,i,j) = src1(k,l,i) * src2(l,j)")

    def test_match_comes_where_the_order_says(self):
        lines = list(emit.check_lines(self.form("kormMul_tam_32f")))
        self.assertIn("if (!(src1Height == src2Height)) return korStatusSizeMismatch;", lines[3])
        self.assertIn("korStatusBadStride", lines[4])

    def test_estimate(self):
        self.assertEqual(emit.estimate(self.form("kormMul_tam_32f")),
                         "const Estimate estimate = Estimate(src1Height) * Estimate(src2Width) + "
                         "Estimate(src1Width) * Estimate(count);")

    def test_kernels(self):
        form = self.form("kormMul_tam_32f")
        self.assertEqual([form.template(kernel) for kernel in form.kernels], ["product<second>", "product<first>"])
        text = emit.kernel_function(form, form.kernels[0])
        self.assertIn("product<second>(\n        transposed(plainArray(src1, src1ObjectStride, src1RowStride)),", text)
        self.assertIn("Shape{src1Width, src1Height, src2Width}, count);", text)
        self.assertIn("int32_t /*src2Height*/", text)
        self.assertNotIn("/*src1Height*/", text)

    def test_pitches_of_tables_are_stored_widths(self):
        text = emit.kernel_function(self.form("kormMul_tam_32f_P"), "v8_ownkormMul_tam_32f_P")
        self.assertIn("transposed(scatteredArray(src1, src1Offset, src1ObjectStride, src1Width))", text)
        self.assertIn("scattered(src2, src2Offset, src2Width)", text)
        self.assertIn("scatteredArray(dst, dstOffset, dstObjectStride, src2Width)", text)

    def test_every_kernel_has_a_row(self):
        form = self.form("kormMul_tam_32f")
        form.family.variants = [Variant("mam_32f", "other")]
        with self.assertRaisesRegex(ValueError, "no row of variants covers it"):
            form.template(form.kernels[0])


if __name__ == "__main__":
    unittest.main()
