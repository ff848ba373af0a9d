#!/usr/bin/env python3
"""Write the fluid files, the mixture parameter file and the mixture files of the installation.

    python3 tools/make_fluid_files.py [--out DIR] [FLUID ...]

Reads the neutral tables of tools/fluid_tables and writes

    DIR/fluids/NAME.FLD     one per pure fluid
    DIR/fluids/HMX.BNC      mixing parameters of the binary pairs, departure functions
    DIR/mixtures/NAME.MIX   the predefined blends

DIR is data/ beside tools/ unless given. With fluid names only these fluid files are written.
Numbers are written with the fewest digits that read back to the same binary value, so the files
carry the tables bit for bit; tools/check_fluid_files.py verifies that.

docs/fluid-files.md explains the format. A new kind of equation-of-state section needs one function
that returns its body lines and one row in EOS_WRITERS.
"""
import argparse
import json
import os
import sys
import textwrap

from benedict import benedict_coefficients, is_benedict_form

HERE = os.path.dirname(os.path.abspath(__file__))
TABLES = os.path.join(HERE, "fluid_tables")
FILE_VERSION = 10.0

# Characters 2 to 4 of a line that starts a section. Body lines must not show them by accident.
SECTION_KEYS = ("EOS", "eos", "AUX", "TRN", "trn", "ETA", "eta", "VIS", "vis", "TCX", "tcx", "STN", "stn",
                "DE ", "de ", "MLT", "mlt", "SBL", "sbl", "PS ", "ps ", "PL ", "pl ", "DL ", "dl ",
                "DV ", "dv ", "END")


# ---- text pieces -----------------------------------------------------------------------------

def number(x):
    """Shortest decimal text that reads back to the same value."""
    return repr(float(x))


def value_line(values, remark=""):
    """One free-form line: reals and integers separated by blanks, then an optional remark."""
    text = "  " + "  ".join(v if isinstance(v, str) else str(v) if isinstance(v, int) else number(v)
                            for v in values)
    return text if not remark else "%-50s !%s" % (text, remark)


def real_line(values, remark=""):
    return value_line([float(v) for v in values], remark)


def count_line(values, remark=""):
    return value_line([int(v) for v in values], remark)


def tag_line(tag, remark=""):
    """A line whose first three characters are a pointer to another model."""
    assert len(tag) == 3, tag
    return tag if not remark else "%-50s !%s" % (tag, remark)


def table(rows, integer_last=False):
    """Aligned rows of reals; the last column as integers where the reader takes an integer."""
    cells = []
    for row in rows:
        texts = [number(v) for v in row]
        if integer_last:
            assert float(row[-1]) == int(row[-1]), row
            texts[-1] = str(int(row[-1]))
        cells.append([t if t.startswith("-") else " " + t for t in texts])
    widths = [max(len(c[k]) for c in cells if len(c) > k) for k in range(max(map(len, cells)))] if cells else []
    return [" " + "  ".join(c.ljust(w) for c, w in zip(row, widths)).rstrip() for row in cells]


def citation_text(c):
    """Authors, "Title," journal volume, pages (year). DOI."""
    text = c["authors"] + ", "
    if c.get("title"):
        text += '"' + c["title"] + '," '
    place = " ".join(str(v) for v in (c.get("journal"), c.get("volume")) if v)
    if c.get("pages"):
        place += (", " if place else "") + c["pages"]
    text += (place + " " if place else "") + "(%d)." % c["year"]
    return text + (" doi:" + c["doi"] if c.get("doi") else "")


def short_citation(c):
    """Surnames, journal volume, page (year), for the lines of a binary pair."""
    names = [a.strip().split()[-1] for a in c["authors"].split(",")]
    who = names[0] if len(names) == 1 else names[0] + " and " + names[1] if len(names) == 2 else names[0] + " et al."
    place = " ".join(str(v) for v in (c.get("journal"), c.get("volume")) if v)
    if c.get("pages"):
        place += ", " + c["pages"]
    return "%s, %s (%d)" % (who, place, c["year"])


def question_lines(paragraphs):
    """The `?` lines of a section, one blank `?` line between paragraphs."""
    out = []
    for p in paragraphs:
        if not p:
            continue
        if out:
            out.append("?")
        out += ["?" + line for line in textwrap.wrap(p, 100, break_long_words=False, break_on_hyphens=False)]
    return out


def estimated_notes(*properties):
    """Properties of the default models that rest on an estimate: what programs that read the file look for."""
    return ["Estimated: %s" % p for p in properties]


def known_notes(block):
    """Deviations that frigana check-data shall report as known: the figure, how far it goes, and why."""
    return ["Known: %s up to %s: %s." % (k["figure"], number(k["bound"]), k["reason"]) for k in block.get("known", [])]


def section(mark, key, title, tag, model, paragraphs, body):
    """A whole section: header, tag line with the model's citation, `?` lines, `!`, body, blank line."""
    assert mark in "#@" and "%-3s" % key in SECTION_KEYS and len(tag) == 3
    head = "%s%-4s !---%s---" % (mark, key, title)
    model_line = "%s  %s" % (tag, model)
    assert len(model_line) <= 254, model_line
    notes = question_lines(paragraphs)
    assert len(notes) < 1000
    for line in body:
        assert line and line[0] not in "!#@?", line
        assert line[1:4] not in SECTION_KEYS, line
        assert len(line) <= 255, line
    for line in notes:
        assert len(line) <= 255
    return [head, model_line] + notes + ["!"] + body + [""]


def who(c):
    names = [a.strip().split()[-1] for a in c["authors"].split(",")]
    text = names[0] if len(names) == 1 else names[0] + " and " + names[1] if len(names) == 2 else names[0] + " et al."
    return "%s (%d)" % (text, c["year"])


def range_text(limits, note=None):
    text = "Range: %s to %s K" % (limits["tmin"], limits["tmax"])
    if limits.get("pmax"):
        text += ", up to %s MPa" % number(limits["pmax"] / 1000)
    if limits.get("dmax"):
        text += ", up to %s mol/L" % limits["dmax"]
    return text + (" (%s)." % note if note else ".")


def uncertainty_text(statement):
    return "Uncertainty: " + statement + "." if statement else "Uncertainty: no statement recorded."


def limit_lines(limits):
    return [real_line([limits["tmin"]], "lower temperature limit [K]"),
            real_line([limits["tmax"]], "upper temperature limit [K]"),
            real_line([limits["pmax"]], "upper pressure limit [kPa]"),
            real_line([limits["dmax"]], "maximum density [mol/L]")]


# ---- equation of state -----------------------------------------------------------------------

def body_feq(fluid, eos):
    c = fluid["constants"]
    n = eos["counts"]
    counts = [n[k] for k in ("nterm", "ncoeff", "ncrt", "ncfcrt", "nspare", "ncfsp")]
    assert counts[0] == len(eos["terms"]) and counts[2] == len(eos["critical_rows"])
    assert all(len(r) == counts[1] for r in eos["terms"]) and all(len(r) == 12 for r in eos["critical_rows"])
    return limit_lines(eos) + [
        tag_line(eos["cp0_tag"], "pointer to the ideal-gas block"),
        real_line([c["molar_mass"]], "molar mass [g/mol]"),
        real_line([c["ttrip"]], "triple point temperature [K]"),
        real_line([c["ptrip"]], "pressure at the triple point [kPa]"),
        real_line([c["dtrip_liq"]], "liquid density at the triple point [mol/L]"),
        real_line([c["tnbp"]], "normal boiling point temperature [K]"),
        real_line([c["acentric"]], "acentric factor"),
        real_line([c["tcrit"], c["pcrit"], c["dcrit"]], "Tc [K], pc [kPa], rhoc [mol/L]"),
        real_line(eos["reducing"], "reducing temperature [K] and density [mol/L]"),
        real_line([eos["gas_constant"]], "gas constant [J/(mol K)]"),
        count_line(counts, "terms, columns; critical-region rows, columns; two unused"),
    ] + table(eos["terms"]) + table(eos["critical_rows"])


def body_bwr(fluid, eos):
    c = fluid["constants"]
    b = benedict_coefficients(eos["helmholtz"])
    # The critical point here is the reducing point: the equation is read with a warning otherwise.
    tred, dred = eos["reducing"]
    return limit_lines(eos) + [
        tag_line(eos["cp0_tag"], "pointer to the ideal-gas block"),
        real_line([c["molar_mass"]], "molar mass [g/mol]"),
        real_line([c["ttrip"]], "triple point temperature [K]"),
        real_line([c["ptrip"]], "pressure at the triple point [kPa]"),
        real_line([c["dtrip_liq"]], "liquid density at the triple point [mol/L]"),
        real_line([c["tnbp"]], "normal boiling point temperature [K]"),
        real_line([c["acentric"]], "acentric factor"),
        real_line([tred, c["pcrit"], dred], "Tc [K], pc [kPa], rhoc [mol/L]"),
        real_line([tred, dred], "reducing temperature [K] and density [mol/L]"),
        real_line([dred], "density of the exponential [mol/L]"),
        real_line([eos["gas_constant"] / 100], "gas constant [L bar/(mol K)]"),
        count_line([32, 1], "coefficients; unused"),
    ] + table([b[k:k + 3] for k in range(0, 32, 3)])


def benedict_alternatives(fluid):
    """The pressure-explicit form of an equation that is given in its Helmholtz form."""
    eos = fluid["eos"]
    if not is_benedict_form(eos):
        return []
    return [dict(eos, tag="BWR", helmholtz=eos,
                 note="The 32 coefficients are computed from the equivalent Helmholtz form above.")]


EOS_WRITERS = {"FEQ": (body_feq, "Helmholtz equation of state"),
               "BWR": (body_bwr, "modified Benedict-Webb-Rubin equation of state")}


def eos_section(fluid, eos, mark):
    writer, kind = EOS_WRITERS[eos["tag"]]
    notes = [citation_text(eos["citation"]), uncertainty_text(eos.get("uncertainty")), range_text(eos)] + known_notes(eos)
    if eos.get("dmax_computed"):
        notes.append("The maximum density is computed: %s." % eos["dmax_note"])
    if fluid["name"] in ("R123", "R152A") and eos["tag"] == "FEQ":
        notes.append("The modified Benedict-Webb-Rubin equation of the paper in its equivalent Helmholtz form.")
    return section(mark, "EOS", "equation of state", eos["tag"],
                   "%s for %s of %s" % (kind, fluid["identity"]["short_name"], who(eos["citation"])),
                   notes + [eos.get("note")], writer(fluid, eos))


# ---- ideal gas -------------------------------------------------------------------------------

def cpp_section(fluid):
    g = fluid["ideal_gas"]
    b = g["cpp"]
    assert not b["cosh"] and not b["sinh"]
    rows = b["power"] + b["planck_einstein"]
    assert sum(b["counts"]) == len(rows) <= 20
    return section("#", "AUX", "ideal-gas heat capacity", b["tag"],
                   "ideal-gas heat capacity of %s of %s" % (fluid["identity"]["short_name"], who(g["citation"])),
                   [citation_text(g["citation"])],
                   limit_lines(b) + [
                       real_line([b["tred"], b["cred"]], "reducing temperature [K] and heat capacity [J/(mol K)]"),
                       count_line(b["counts"], "terms: power, Planck-Einstein, cosh, sinh; three unused")]
                   + table(rows))


def ph0_section(fluid):
    g = fluid["ideal_gas"]
    b = g["ph0"]
    if not b:
        return []
    rows = b["log"] + b["power"] + b["planck_einstein"]
    assert sum(b["counts"]) == len(rows) <= 10
    return section("#", "AUX", "ideal-gas Helmholtz energy", b["tag"],
                   "ideal-gas Helmholtz energy of %s of %s" % (fluid["identity"]["short_name"], who(g["citation"])),
                   [citation_text(g["citation"]),
                    "The same heat capacity as the block CPP. The two linear terms (exponents 0 and 1) only set "
                    "the zero of enthalpy and entropy."],
                   limit_lines(b) + [
                       count_line(b["counts"], "terms: a ln(tau^b), a tau^b, a ln(1 - exp(b tau)), cosh, sinh; "
                                               "three unused")]
                   + table(rows))


# ---- viscosity -------------------------------------------------------------------------------

def dilute_lines(v):
    return [tag_line(v["collision_tag"], "collision integral"),
            real_line([v["sigma_nm"]], "Lennard-Jones sigma [nm]"),
            real_line([v["eps_over_k"]], "Lennard-Jones epsilon/k [K]"),
            real_line([v["dilute_tred"], v["dilute_etared"]], "reducing T [K], eta [uPa s] of the dilute gas")] \
        + table(v["dilute"])


def b2_lines(v):
    b = v["b2"]
    return [value_line([len(b["terms"]), float(b["tred"]), float(b["etared"])],
                       "terms of the second viscosity virial coefficient, its T [K] and reducing value")] \
        + table(b["terms"])


def body_vs1(v):
    r = v["residual"]
    assert abs(r["ndel0"]) == len(r["delta0"])
    assert v["dilute_counts"][0] == len(v["dilute"]) and not any(v["dilute_counts"][1:])
    rows = [list(x) + [0.0, 0.0, 0] for x in r["delta0"]]
    for k in ("poly", "num", "den", "expnum", "expden"):
        rows += r[k]
    return limit_lines(v["limits"]) + [count_line(v["dilute_counts"], "terms of the dilute gas; five unused")] \
        + dilute_lines(v) + b2_lines(v) + [
            count_line([r["ndel0"]] + [len(r[k]) for k in ("poly", "num", "den", "expnum", "expden")],
                       "rows: close-packed density, polynomial, numerator, denominator, exponential num., den."),
            real_line([r["tred"], r["dred"], r["etared"]], "reducing T [K], rho [mol/L], eta [uPa s]")] \
        + table(rows, integer_last=True) + [tag_line(v["enhancement_tag"], "critical enhancement")]


def built_in_rows(b):
    """Rows of a correlation that is built into the program: of the dilute gas c, e; of the background its constants, or
    c, i, j. Five columns as the reader takes them."""
    dilute = [[c, e, 0.0, 0.0, 0] for c, e in b.get("dilute_rows", [])]
    background = [[x, 0.0, 0.0, 0.0, 0] for _, x in b.get("constant_rows", [])]
    return dilute, background + [[c, i, j, 0.0, 0] for c, i, j in b.get("background_rows", [])]


def body_vs0(v):
    first, rows = built_in_rows(v)
    dilute = v.get("dilute", [])
    out = limit_lines(v["limits"]) + [
        tag_line(v["subtag"], "correlation, built into the program"),
        count_line([len(dilute), len(first), len(rows), 0, 0, 0, 0],
                   "rows: dilute gas; close-packed density, polynomial, num., den., exponential num., den.")]
    rows = first + rows
    if dilute:
        out += dilute_lines(v)
    if rows:
        r = v["residual_reducing"]
        out += [real_line([r["tred"], r["dred"], r["etared"]], "reducing T [K], rho [mol/L], eta [uPa s]")]
        out += table(rows, integer_last=True)
    return out + [tag_line(v["enhancement_tag"], "critical enhancement")]


def body_vs4(v):
    f = v["friction"]
    assert f["tred"] == v["dilute_tred"]
    rows = [list(f[k]) + [f["gamma_exponents"][k]] for k in ("a", "b", "c", "A", "B", "C", "D", "E")]
    return limit_lines(v["limits"]) + [count_line(v["dilute_counts"], "terms of the dilute gas; five unused")] \
        + dilute_lines(v) + b2_lines(v) + table(rows) + [tag_line(v["enhancement_tag"], "critical enhancement")]


def body_vs5(v):
    q = v["chung"]
    assert q["nadd"] == 0 and not v["dilute"]
    return limit_lines(v["limits"]) + [count_line(v["dilute_counts"], "further terms of the dilute gas; five unused")] \
        + dilute_lines(v) + b2_lines(v) + [
            value_line([q["acentric"], q["dipole_reduced"], q["association_kappa"], q["nadd"]],
                       "acentric factor, reduced dipole, association; rows that replace the general table")] \
        + [tag_line(v["enhancement_tag"], "critical enhancement")]


VISCOSITY_WRITERS = {"VS0": (body_vs0, "viscosity"), "VS1": (body_vs1, "viscosity"),
                     "VS4": (body_vs4, "viscosity by the friction theory"),
                     "VS5": (body_vs5, "viscosity by the method of Chung et al.")}


def transport_notes(block, statement):
    out = [citation_text(block["citation"]) if block.get("citation") else None]
    if block.get("b2_citation"):
        out.append("Second viscosity virial coefficient: " + citation_text(block["b2_citation"]))
    if block.get("collision_citation"):
        out.append("Collision integral: " + citation_text(block["collision_citation"]))
    out.append(uncertainty_text(statement))
    out.append(range_text(block["limits"], block.get("limits_note")))
    for note in (block.get("note"), block.get("residual", {}).get("note"), block.get("formula"),
                 block.get("chung", {}).get("formula"), block.get("friction", {}).get("formula"),
                 block.get("friction", {}).get("units")):
        if note:
            out.append("Note: " + note)
    if block.get("constant_rows"):
        out.append("Rows: " + ", ".join(k for k, _ in block["constant_rows"]) + ".")
    if block.get("estimated"):
        out.append("ESTIMATED.")
    return out + known_notes(block)


def viscosity_sections(fluid, statements):
    out = []
    default = fluid["viscosity"]
    for block, mark, key in ((default, "#", "viscosity"), (fluid["viscosity_alternative"], "@", "viscosity_alternative")):
        if not block or block["tag"] == "ECS":
            continue  # corresponding states: the block TRN
        if mark == "@" and block["tag"] == default["tag"]:
            continue  # a second section of the same tag would overwrite the first
        writer, kind = VISCOSITY_WRITERS[block["tag"]]
        out += section(mark, "ETA", "viscosity", block["tag"],
                       "%s of %s of %s" % (kind, fluid["identity"]["short_name"], who(block["citation"])),
                       transport_notes(block, statements.get(key)), writer(block))
    ci = fluid["collision_integral"]
    if ci and ci["tag"] != "CI0":  # CI0 is a closed form without data
        v = default if default.get("collision_tag") == ci["tag"] else fluid["viscosity_alternative"]
        c = v.get("collision_citation") or v["citation"]
        out += section("#", "AUX", "collision integral", ci["tag"],
                       "collision integral of %s of %s" % (fluid["identity"]["short_name"], who(c)),
                       [citation_text(c), ci.get("note"),
                        "Omega = exp(sum c ln(T k/epsilon)^n); sigma and epsilon in the viscosity block."],
                       limit_lines(ci) + [count_line([ci["nterm"]], "terms")] + table(ci["terms"], integer_last=True))
    return out


# ---- thermal conductivity --------------------------------------------------------------------

def body_tc1(k):
    assert k["dilute_counts"] == [len(k["dilute_num"]), len(k["dilute_den"])]
    assert k["background_counts"] == [len(k["background_num"]), len(k["background_den"])]
    return limit_lines(k["limits"]) + [
        count_line(k["dilute_counts"], "terms of the dilute gas: numerator, denominator"),
        real_line([k["dilute_tred"], k["dilute_kred"]], "reducing T [K], lambda [W/(m K)]")] \
        + table(k["dilute_num"] + k["dilute_den"]) + [
            count_line(k["background_counts"], "terms of the background: numerator, denominator"),
            real_line([k["background_tred"], k["background_dred"], k["background_kred"]],
                      "reducing T [K], rho [mol/L], lambda [W/(m K)]")] \
        + table(k["background_num"] + k["background_den"]) + [tag_line(k["enhancement_tag"], "critical enhancement")]


def body_tc0(k):
    first, rows = built_in_rows(k)
    out = limit_lines(k["limits"]) + [
        tag_line(k["subtag"], "correlation, built into the program"),
        count_line([len(first), 0, len(rows), 0], "rows: dilute gas num., den.; background num., den.")]
    rows = first + rows
    if rows:
        r = k["reducing"]
        out += [real_line([r["tred"], r["dred"], r["kred"]], "reducing T [K], rho [mol/L], lambda [W/(m K)]")]
        out += table(rows, integer_last=True)
    return out + [tag_line(k["enhancement_tag"], "critical enhancement")]


CONDUCTIVITY_WRITERS = {"TC0": body_tc0, "TC1": body_tc1}


def body_tk1(b):
    num = [[x[k] for k in ("c", "a", "b", "e", "f", "int")] for x in b["num"] + b["den"]]
    exp = [[x["c"], x["a"], x["i"], x["b"], x["j"]] for x in b["exp"]]
    assert b["counts"] == [len(b["num"]), len(b["den"]), len(exp), 0]
    out = limit_lines(b["limits"]) + [
        count_line(b["counts"], "rows: numerator, denominator, exponential; one unused"),
        real_line(b["reducing"], "reducing T [K], rho [mol/L], lambda [W/(m K)]")] + table(num, integer_last=True)
    if exp:
        out += [real_line(b["exp_reducing"], "reducing T [K] (negative: -Tr/T), rho [mol/L] of the exponent")]
        # The powers i and j stand without a decimal point and a sixth number 0 follows, so that
        # the rows have the shape of the rows above.
        out += ["  %s  %s  %d  %s  %d  0" % (number(c), number(a), i, number(bb), j) for c, a, i, bb, j in exp]
    return out


def body_tk3(b):
    assert b["counts"] == [9, 0, 0, 0] and len(b["rows"]) == 9
    names = {"nu": "nu (universal exponent)", "gamma": "gamma (universal exponent)", "R0": "R0 (universal amplitude)",
             "z": "z (universal exponent, unused)", "c": "c (constant in the viscosity term, unused)",
             "xi0_m": "xi0 [m] (amplitude)", "Gamma": "Gamma (amplitude)",
             "qd_inverse_m": "1/qd [m] (cutoff length)", "Tref": "reference temperature [K]"}
    assert [k for k, _ in b["rows"]] == list(names)
    return limit_lines(b["limits"]) + [
        count_line(b["counts"], "rows: numerator, denominator; two unused"),
        real_line(b["reducing"], "reducing T [K], rho [mol/L], lambda [W/(m K)]")] \
        + ["%-50s !%s" % ("  %s  0.0  0.0  0.0  0.0  0" % number(x), names[k]) for k, x in b["rows"]]


def enhancement_section(fluid, b, remark):
    body = body_tk1(b) if b["tag"] == "TK1" else body_tk3(b)
    notes = [citation_text(b["citation"]), b.get("formula"), b.get("note")]
    if b.get("estimated"):
        notes.append("ESTIMATED: the universal amplitudes and cutoff length of the simplified crossover model.")
    return section("#", "AUX", remark, b["tag"],
                   "critical enhancement of the conductivity of %s, model of %s"
                   % (fluid["identity"]["short_name"], who(b["citation"])), notes, body)


def conductivity_sections(fluid, statements):
    out = []
    default = fluid["conductivity"]
    for block, mark, key in ((default, "#", "conductivity"),
                             (fluid["conductivity_alternative"], "@", "conductivity_alternative")):
        if not block or block["tag"] == "ECS":
            continue
        if mark == "@" and block["tag"] == default["tag"]:
            continue
        out += section(mark, "TCX", "thermal conductivity", block["tag"],
                       "thermal conductivity of %s of %s" % (fluid["identity"]["short_name"], who(block["citation"])),
                       transport_notes(block, statements.get(key)), CONDUCTIVITY_WRITERS[block["tag"]](block))
    if fluid["critical_enhancement"]:
        out += enhancement_section(fluid, fluid["critical_enhancement"], "critical enhancement")
    return out


# ---- corresponding states --------------------------------------------------------------------

def ecs_notes(fluid):
    e = fluid["ecs"]
    est = e["estimated"]
    out = []
    for key, text in (("sigma_eps", "Lennard-Jones parameters"), ("psi", "Viscosity shape factor psi"),
                      ("chi", "Conductivity shape factor chi")):
        c = e["citation"].get(key)
        if c and not est[key]:
            out.append(text + ": " + citation_text(c))
    if est["sigma_eps"]:
        out.append("ESTIMATED: sigma = 0.0809 nm (Vc in cm3/mol)^(1/3) and epsilon/k = Tc/1.2593.")
    names = [k for k in ("psi", "chi") if est[k]]
    if names:
        extra = " (%s)" % e["psi_note"] if e.get("psi_note") else " (1)" if not e.get("psi_note") else ""
        out.append("ESTIMATED: " + " and ".join(names) + extra + ".")
    if est["f_int"]:
        out.append("ESTIMATED: the factor of the internal contribution to the conductivity, the usual 1.32e-3.")
    own = [w for w, k in (("viscosity", "viscosity"), ("conductivity", "conductivity")) if fluid[k]["tag"] != "ECS"]
    if own:
        out.append("The fluid has its own correlation of %s; this block serves mixtures and forced models."
                   % " and ".join(own))
    for k, name in (("psi", "psi"), ("chi", "chi")):
        if e["published_density_scale"].get(k):
            out.append("%s was published in terms of rho/%s mol/L and is rescaled exactly to rho/rhoc."
                       % (name, number(e["published_density_scale"][k])))
    for k in ("sigma_note", "note"):
        if e.get(k):
            out.append("Note: " + e[k])
    out += estimated_notes(*(k for k in ("viscosity", "conductivity") if fluid[k].get("estimated")))
    return out + known_notes(e)


def ecs_sections(fluid):
    e = fluid["ecs"]
    uses = "ECS" in (fluid["viscosity"]["tag"], fluid["conductivity"]["tag"])
    assert sum(e["psi_counts"]) == len(e["psi"]) and sum(e["chi_counts"]) == len(e["chi"])
    assert all(len(r) == 4 for k in ("f_int", "psi", "chi") for r in e[k])
    body = limit_lines(e["limits"]) + [
        # The reference fluid's name is read to the end of the line: no remark here.
        "%s %s" % (e["reference_eos_tag"], e["reference_fluid"]),
        tag_line(e["reference_viscosity_tag"], "viscosity model of the reference fluid"),
        tag_line(e["reference_conductivity_tag"], "conductivity model of the reference fluid"),
        count_line([e["lj_flag"]], "Lennard-Jones flag: 1 = the numbers below, 0 = scaled, 2 = by shape factors"),
        real_line([e["sigma_nm"]], "Lennard-Jones sigma [nm]"),
        real_line([e["eps_over_k"]], "Lennard-Jones epsilon/k [K]"),
        count_line([len(e["f_int"])], "rows f_int: coefficient, power of T")] + table(e["f_int"]) + [
        count_line(e["psi_counts"], "rows psi: coefficient, power of T/Tc, power of rho/rhoc")] + table(e["psi"]) + [
        count_line(e["chi_counts"], "rows chi: coefficient, power of T/Tc, power of rho/rhoc")] + table(e["chi"]) + [
        tag_line(e["enhancement_tag"], "critical enhancement under this model")]
    return section("#" if uses else "@", "TRN", "transport by extended corresponding states", e["tag"],
                   "extended corresponding states for %s, reference fluid %s"
                   % (fluid["identity"]["short_name"], e["reference_fluid"].split(".")[0]), ecs_notes(fluid), body) \
        + enhancement_section(fluid, fluid["ecs_enhancement"], "critical enhancement under corresponding states")


# ---- surface tension, solid boundary, ancillaries --------------------------------------------

def surface_tension_of(fluid):
    """The correlation, or the estimate in its place; None where there is neither."""
    return fluid["surface_tension"] or fluid.get("surface_tension_estimate")


def surface_tension_section(fluid, statement):
    s = surface_tension_of(fluid)
    if not s:
        return []
    assert s["nterm"] == len(s["terms"])
    notes = [citation_text(s["citation"]), uncertainty_text(statement),
             "Range: %s to %s K." % (s["tmin"], s["tmax"]), "Note: " + s["note"] if s.get("note") else None]
    if s.get("estimated"):
        notes += estimated_notes("surface tension")
    return section("#", "STN", "surface tension", s["tag"],
                   "surface tension of %s%s of %s" % (fluid["identity"]["short_name"], ", estimated by the method" if s.get("estimated") else "",
                                                     who(s["citation"])), notes,
                   [real_line([s["tmin"]], "lower temperature limit [K]"),
                    real_line([s["tmax"]], "upper temperature limit [K]"),
                    real_line([0.0], "unused"), real_line([0.0, 0.0], "unused"),
                    count_line([s["nterm"]], "terms"),
                    real_line([s["tc"]], "critical temperature used by the authors [K]")] + table(s["terms"]))


def solid_section(fluid, key, name, title):
    b = fluid[name]
    if not b:
        return []
    rows = b["terms1"] + b["terms2"] + b["terms3"]
    assert b["counts"][:3] == [len(b["terms1"]), len(b["terms2"]), len(b["terms3"])]
    notes = [citation_text(b["citation"]), b.get("citation_note"), "Note: " + b["note"] if b.get("note") else None]
    for part in b.get("parts", []):
        notes.append("Published: " + ", ".join("%s = %s" % kv if kv[0] != "form" else kv[1] for kv in part.items())
                     + " (K, kPa).")
    return section("#", key, title, b["tag"],
                   "%s of %s of %s" % (title, fluid["identity"]["short_name"], who(b["citation"])), notes,
                   [real_line([b["tmin"]], "lower temperature limit [K]"),
                    real_line([b["tmax"]], "upper temperature limit [K]"),
                    real_line([0.0], "unused"), real_line([0.0], "unused"),
                    real_line([b["tred"], b["pred"]], "reducing temperature [K] and pressure [kPa]"),
                    count_line(b["counts"], "terms of the three families; three unused")] + table(rows))


def ancillary_section(fluid, key, name, title, unit):
    b = fluid["ancillaries"].get(name)
    if not b:
        return []
    assert b["counts"] == [len(b["terms"]), 0, 0, 0, 0, 0] and len(b["terms"]) <= 15
    return section("#", key, title, b["tag"], "%s of %s, fit to the equation of state"
                   % (title, fluid["identity"]["short_name"]),
                   ["%s; largest deviation %s %% at %s K." % (b["origin"][0].upper() + b["origin"][1:],
                                                            b["max_dev_percent"], b["max_dev_at_T"])],
                   [real_line([b["tmin"]], "lower temperature limit [K]"),
                    real_line([b["tmax"]], "upper temperature limit [K]"),
                    real_line([0.0], "unused"), real_line([0.0], "unused"),
                    real_line([b["tred"], b["vred"]], "reducing temperature [K] and value [%s]" % unit),
                    count_line(b["counts"], "terms; five unused")] + table(b["terms"]))


# ---- a whole fluid file ----------------------------------------------------------------------

def header(fluid):
    i, c = fluid["identity"], fluid["constants"]
    hoc = i["gross_heat_of_combustion_kJ_mol"]
    atoms = "%s  {%s}" % (i["formula"], i["atoms"])
    out = ["%-50s !short name" % i["short_name"],
           "%-50s !CAS number" % i["cas"],
           # Names, formula and synonym are taken to the end of the line: no remarks.
           i["full_name"], atoms, i["synonym"] or i["short_name"],
           real_line([c["molar_mass"]], "molar mass [g/mol]"),
           real_line([c["ttrip"]], "triple point temperature [K]"),
           real_line([c["tnbp"]], "normal boiling point [K]"),
           real_line([c["tcrit"]], "critical temperature [K]"),
           real_line([c["pcrit"]], "critical pressure [kPa]"),
           real_line([c["dcrit"]], "critical density [mol/L]"),
           real_line([c["acentric"]], "acentric factor"),
           real_line([c["dipole_debye"]], "dipole moment [debye]"),
           tag_line(c["default_reference_state"], "default reference state"),
           real_line([FILE_VERSION], "version of the file format"),
           "%-50s !UN number%s" % (i["un_number"] or "", "" if i["un_number"] else " (none recorded)"),
           "%-50s !family" % i["family"]]
    remark = "heat of combustion [kJ/mol], gross" + (", " + i["heat_of_combustion_note"]
                                                     if i["heat_of_combustion_note"] else "")
    out.append("%-50s !%s" % (number(-1.0 if hoc is None else hoc),
                              "heat of combustion (-1: not available)" if hoc is None else remark))
    out.append("")
    notes = [v for k, v in c.items() if k.endswith("_note")]
    if not c["dipole_certain"]:
        notes.append("The dipole moment is less certain.")
    if abs(c["pcrit_from_eos"] / c["pcrit"] - 1) > 5e-5:
        notes.append("The equation of state gives %s kPa at the critical temperature and density."
                     % number(c["pcrit_from_eos"]))
    out.append("! Units: K, kPa, mol/L, g/mol, J/(mol K), uPa s, W/(m K), N/m. Made by tools/make_fluid_files.py.")
    for n in notes:
        out += ["! " + line for line in textwrap.wrap(n, 98)]
    return out + [""]


def fluid_file(fluid, statements):
    out = header(fluid)
    out += eos_section(fluid, fluid["eos"], "#")
    for eos in fluid.get("eos_alternatives", []) + benedict_alternatives(fluid):
        out += eos_section(fluid, eos, "@")
    # The pointer to the ideal-gas block is set by the equation of state, those to the collision
    # integral and the critical enhancement by the transport blocks: each AUX block stands after
    # the block that names it.
    out += cpp_section(fluid) + ph0_section(fluid)
    out += viscosity_sections(fluid, statements) + conductivity_sections(fluid, statements)
    # Corresponding states after the own correlations: the first section marked # wins.
    out += ecs_sections(fluid)
    out += surface_tension_section(fluid, statements.get("surface_tension"))
    out += solid_section(fluid, "MLT", "melting", "melting line")
    out += solid_section(fluid, "SBL", "sublimation", "sublimation line")
    out += ancillary_section(fluid, "PS", "ps", "vapor pressure", "kPa")
    out += ancillary_section(fluid, "PL", "pl", "bubble pressure", "kPa")
    out += ancillary_section(fluid, "DL", "dl", "saturated liquid density", "mol/L")
    out += ancillary_section(fluid, "DV", "dv", "saturated vapor density", "mol/L")
    # A marked END is read as a section header: two lines must follow.
    out += ["@END", "!", "!"]
    text = "\n".join(out) + "\n"
    text.encode("ascii")
    return text


# ---- mixtures --------------------------------------------------------------------------------

ESTIMATED = "No mixture data are available for this binary pair. The mixing parameters have been estimated."


def estimated_record(a, b):
    """A pair without published parameters, as the engine estimates it when there is no record: Lemmon and McLinden (2001).

    The record is there for the sake of the critical line, which cannot be estimated.
    """
    first, second = a["constants"], b["constants"]
    dipole = first["dipole_debye"] - second["dipole_debye"]
    size = [c["tcrit"] / (c["pcrit"] * c["acentric"]) for c in (first, second)]
    if dipole < 0 if abs(dipole) >= 1e-5 else size[1] > size[0]:
        first, second = second, first
    r = {k: second[k] / first[k] for k in ("tcrit", "pcrit", "acentric")}
    c = r["tcrit"] / r["pcrit"] / r["acentric"]
    if c > 5 and abs(r["acentric"]) < 0.1 and 0.75 < r["tcrit"] < 1.25:
        r = {k: 1 / v for k, v in r.items()}
        c = r["tcrit"] / r["pcrit"] / r["acentric"]
    zeta = (40.4 - 25.03 * 2 ** c) / r["tcrit"]
    assert abs(zeta) <= 200
    return ["LJ6", [zeta, 0.0, 0.0, 1.0, 1.0, 0.0]]


def lines_beyond(critical, by_cas):
    """The critical lines that miss their points by more than the others keep, as text."""
    return ", ".join("%s + %s %.1f K %.0f %%" % (*(by_cas[n]["name"] for n in cas.split("/")), line["beyond"]["K"],
                                                 line["beyond"]["percent"])
                     for cas, line in critical.items() if "beyond" in line)


def mixture_parameter_file(pairs, functions, critical, known_estimates, fluids):
    """HMX.BNC. `critical` maps "CAS1/CAS2" to {"TC1": six numbers, "VC1": six numbers}, and a pair without published
    parameters that has a line gets a record of its own; `known_estimates` holds some of their estimates to compare."""
    out = ["HMX", " 1"]
    out += ["! Mixing parameters of binary pairs and departure functions. Made by tools/make_fluid_files.py.",
            "! KW: betaT, gammaT, betaV, gammaV, F, unused. LJ: zeta [K], xi [L/mol], F, powers of x_i and x_j, unused.",
            "! TR1: kT, kV, alpha, beta, gamma, unused. TC1, VC1: coefficients of the critical lines [K], [L/mol].", ""]
    for f in functions["functions"]:
        n = f["counts"]
        counts = [n[k] for k in ("n1", "c1", "f", "n2", "c2")]
        assert n["n1"] == len(f["polynomial"]) and n["n2"] == len(f["exponential"]) and n["n1"] + n["n2"] <= 15
        assert all(len(r) == n["c1"] + n["f"] for r in f["polynomial"]) and all(len(r) == n["c2"] for r in f["exponential"])
        assert len(f["parameter_names"]) == 6 and all(len(x) <= 8 for x in f["parameter_names"])
        out += ["#MXM  !---departure function---", "%s  %s" % (f["tag"], f["description"])]
        out += question_lines([citation_text(f["citation"])] + ([f["note"]] if f.get("note") else [])) + ["!"]
        out += [" ".join("%-8s" % x for x in f["parameter_names"]).rstrip(),
                real_line(f["ideal_values"]),
                count_line(counts, "n1 and columns of the terms del^l; 1: column l follows; n2 and columns of the others")]
        out += table(f["polynomial"]) + table(f["exponential"]) + [""]
    # The pairs stand last: a search for a pair that the file does not hold then ends at END and at
    # the end of the file, and never takes a line of another section for a data line.
    sources = ["%s: %s" % (short_citation(c), citation_text(c)) for c in pairs["citations"].values()]
    sources.append("LJ6 with F = 0: no published parameters; estimated by the method of E. W. Lemmon, M. O. McLinden, "
                   "\"Method for Estimating Mixture Equation of State Parameters,\" Thermophysical Properties and Transfer "
                   "Processes of New Refrigerants, IIR Commission B1, Paderborn (2001), 23-30.")
    by_cas = {f["identity"]["cas"]: f for f in fluids.values()}
    sources.append("TC1, VC1: fitted to critical points of each pair from 5 to 95 %, within 0.3 K and 1 % of the pressure, but for "
                   + lines_beyond(critical, by_cas) + ".")
    out += ["#BNC  !---binary pairs---", "BNC"] + question_lines(sources) + ["!"]
    records = []
    for p in pairs["pairs"]:
        lines = ["?%s + %s" % tuple(p["fluids"]), "?" + short_citation(pairs["citations"][p["citation"]])]
        if p["note"]:
            lines.append("?" + p["note"])
        records.append((p["cas"], p["tag"], p["fmix"], lines))
    for p in known_estimates:
        fmix = estimated_record(*(fluids[k] for k in p["fluids"]))[1]
        assert abs(fmix[0] / p["estimate"]["F1_K"] - 1) < 1e-5, p
    published = {frozenset(p["cas"]) for p in pairs["pairs"]}
    for cas in critical:
        numbers = cas.split("/")
        if frozenset(numbers) not in published:
            tag, fmix = estimated_record(*(by_cas[n] for n in numbers))
            records.append((numbers, tag, fmix, ["?" + ESTIMATED]))
    for numbers, tag, fmix, lines in records:
        cas = "/".join(numbers)
        assert len(cas) <= 26
        assert len(fmix) == 6
        lines.append("%-26s%s  %s" % (cas, tag, "  ".join(number(x) for x in fmix)))
        for line_tag in ("TC1", "VC1"):
            values = critical.get(cas, {}).get(line_tag, [0.0] * 6)
            assert len(values) == 6
            lines.append("%26s%s  %s" % ("", line_tag, "  ".join(number(x) for x in values)))
        # What the reader joins into the pair's citation has 255 places.
        assert sum(len(x) for x in lines if x[0] == "?") < 250, lines
        out += lines + ["!"]
    out += ["@END", "!", "!"]
    text = "\n".join(out) + "\n"
    assert len(out) < 20000
    text.encode("ascii")
    return text


def blend_critical_point(fluids, x):
    """Critical point of a blend by the mole-fraction mean; the reader of mixture files ignores it."""
    c = [f["constants"] for f in fluids]
    return [sum(a * k["tcrit"] for a, k in zip(x, c)), sum(a * k["pcrit"] for a, k in zip(x, c)),
            1.0 / sum(a / k["dcrit"] for a, k in zip(x, c))]


def mixture_file(blend, fluids, critical):
    """A .MIX file: mole fractions made from the mass fractions of the blend, with all digits."""
    parts = [fluids[n] for n in blend["components"]]
    moles = [w / f["constants"]["molar_mass"] for w, f in zip(blend["mass_fractions"], parts)]
    total = sum(moles)
    x = [m / total for m in moles]
    molar_mass = sum(a * f["constants"]["molar_mass"] for a, f in zip(x, parts))
    point = critical.get(blend["name"]) or blend_critical_point(parts, x)
    out = [blend["name"], " " + " ".join("%20.12f" % v for v in [molar_mass] + list(point)), "%2d" % len(parts)]
    out += [n + ".FLD" for n in blend["components"]]
    out += [" %20s" % number(v) for v in x]
    return "\n".join(out + [" 0"]) + "\n", x


# ---- the whole set ---------------------------------------------------------------------------

def load(*path):
    with open(os.path.join(TABLES, *path), encoding="utf-8") as f:
        return json.load(f)


def load_optional(*path):
    return load(*path) if os.path.exists(os.path.join(TABLES, *path)) else {}


def load_fluids():
    names = sorted(n[:-5] for n in os.listdir(os.path.join(TABLES, "fluids")) if n.endswith(".json"))
    return {n: load("fluids", n + ".json") for n in names}


def write(path, text):
    with open(path, "w", encoding="ascii", newline="\n") as f:
        f.write(text)


def main():
    parser = argparse.ArgumentParser(description="write the fluid files and mixture files")
    parser.add_argument("--out", default=os.path.join(HERE, "..", "data"))
    parser.add_argument("fluids", nargs="*", help="only these fluids")
    args = parser.parse_args()
    fluids = load_fluids()
    statements = load_optional("statements.json")
    for sub in ("fluids", "mixtures"):
        os.makedirs(os.path.join(args.out, sub), exist_ok=True)
    for name in args.fluids or fluids:
        write(os.path.join(args.out, "fluids", name + ".FLD"), fluid_file(fluids[name], statements.get(name, {})))
    if args.fluids:
        return 0
    pairs, functions = load("mixtures", "binary_pairs.json"), load("mixtures", "departure_functions.json")
    blends = load("mixtures", "blends.json")
    write(os.path.join(args.out, "fluids", "HMX.BNC"),
          mixture_parameter_file(pairs, functions, load_optional("critical_lines.json"), blends["pairs_without_data"],
                                 fluids))
    points = load_optional("blend_critical_points.json")
    for blend in blends["blends"]:
        text, x = mixture_file(blend, fluids, points)
        assert all(abs(a - b) < 1e-12 for a, b in zip(x, blend["mole_fractions"])), blend["name"]
        write(os.path.join(args.out, "mixtures", blend["file"]), text)
    return 0


if __name__ == "__main__":
    sys.exit(main())
