"""Tests of the generator: the grammar over every kind of form the library will have, and its text.

Expected argument lists are written out here in full; none is made by the code under test.
"""

from pathlib import Path
import sys
import unittest

sys.path.insert(0, str(Path(__file__).resolve().parent))

import emit
from fixed import Fixed
from grammar import Departure, Family, Shortcut, Variant, below

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

    def test_a_word_that_names_nothing_is_refused(self):
        with self.assertRaisesRegex(ValueError, "kormAdd_mm_32f: the signature's word 'lenght' names nothing"):
            list(family("Add", "mm", "src1 src2 dst lenght").forms())


class Checks(unittest.TestCase):
    def orders(self, source):
        return {form.stem_and_suffix: " ".join(letter for letter, _ in form.checks) for form in source.forms()}

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

    def test_a_check_may_be_of_one_operand(self):
        rows = [Departure("X_ma_32f_L", "N O:src T:src O:dst T:dst", "operand by operand")]
        source = family("X", "ma", "src dst order count", order_departures=rows)
        form = next(form for form in source.forms() if form.name == "kormX_ma_32f_L")
        self.assertEqual(list(form.checks)[1:3], [("O", ["srcOffset"]), ("T", ["srcRowStride", "srcElementStride"])])


class Drivers(unittest.TestCase):
    def driver(self, source, name):
        return emit.driver_function(next(form for form in source.forms() if form.name == name))

    def test_scratch_and_statuses(self):
        limits = {(layout, "32f"): below(100) for layout in ("standard", "list", "pointer")}
        invert = family("Invert", "ma", "src dst order buffer count", extras={"buffer": "element *"},
                        scratch="order * order + order", merges_status=True, limits=limits)
        text = self.driver(invert, "kormInvert_ma_32f")
        size = "static_cast<std::size_t>(order)"
        self.assertIn(f"forEachRun(count, Statuses::merged, Scratch{{({size} * {size} + {size}) * sizeof(float), buffer}}, "
                      "[=](Run run, void* piece) {", text)
        self.assertIn("static_cast<float*>(piece)", text)

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
int32_t v8_kormAdd_v3_32f(const float *src1, const float *src2, float *dst) {
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
        with self.assertRaisesRegex(ValueError, "there is no check 'T' of a fixed size"):
            list(product.checks)

    def test_arrays_without_sizes_of_their_own(self):
        limits = {("standard", "32f"): below(100)}
        transform = Family("T", "mva", "-", "src1 src2 dst count", "transform", "", "", types="32f", result="v",
                           merges_status=True, estimate="6 * count", limits=limits, formula="formula")
        form = next(transform.forms())
        self.assertEqual(" ".join(letter for letter, _ in form.checks), "N C T")
        self.assertIn("plainArray(dst, dstObjectStride, noRows),\n        count);", emit.kernel_function(form, form.kernels[0]))
        self.assertIn("Statuses::merged, Scratch{}, [=](Run run, void*) {", emit.driver_function(form))


class Products(unittest.TestCase):
    """Sizes beside operands: matches, letters for sizes, a kernel template with arguments of a kernel's own."""

    def form(self, name, **rest):
        rows = [Variant("tam_32f_L* tam_32f_S2", "first"), Variant("*", "second")]
        limits = {("standard", "32f"): below(100), ("pointer", "32f"): below(100)}
        source = family("Mul", "tam mv", PRODUCT, letters={"M": "src1Width", "K": "src1Height", "N": "src2Width"},
                        shape="Shape{M, K, N}", result_width="N", match="src1Height == src2Height", variants=rows,
                        estimate="K * N + M * count", limits=limits, formula="{dst[i,j]} = {src1[i,l]} * {src2[l,j]}",
                        general_order={"standard": "N C S M T", "pointer": "N C S M T O"}, **rest)
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
