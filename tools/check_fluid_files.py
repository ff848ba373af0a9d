#!/usr/bin/env python3
"""Read every written data file back by the rules of its format and compare it with the tables.

    python3 tools/check_fluid_files.py [--data DIR]

The reader here is written from the description of the format, not from the converter. For every
fluid it follows the choice of sections (with the default models and with each alternative forced),
reads each block field by field, and compares every number bit for bit with the table. A section
that is not reached because its pointer is set too late, or a body line that a reader would take
for a key, shows up as a difference. The exit status is 1 if anything differs.
"""
import argparse
import json
import os
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
KEYS = {"EOS", "eos", "AUX", "TRN", "trn", "ETA", "eta", "VIS", "vis", "TCX", "tcx", "STN", "stn", "DE ", "de ",
        "MLT", "mlt", "SBL", "sbl", "PS ", "ps ", "PL ", "pl ", "DL ", "dl ", "DV ", "dv ", "END"}


class Text:
    """A text file read line by line, with the free-form and fixed-width reads of the format."""

    def __init__(self, path):
        with open(path, "rb") as f:
            raw = f.read()
        assert raw.endswith(b"\n") and b"\r" not in raw and b"\t" not in raw
        self.lines = raw.decode("ascii").split("\n")[:-1]
        self.at = 0

    def line(self):
        self.at += 1
        return self.lines[self.at - 1]

    def text(self, width):
        return self.line()[:width].ljust(width)

    def reals(self, n):
        words = self.line().replace(",", " ").split()[:n]
        assert len(words) == n, "line %d: %d numbers wanted" % (self.at, n)
        return [float(w) for w in words]

    def integers(self, n):
        words = self.line().replace(",", " ").split()[:n]
        assert len(words) == n, "line %d: %d integers wanted" % (self.at, n)
        return [int(w) for w in words]

    def rows(self, count, columns, last_integer=False):
        out = []
        for _ in range(count):
            words = self.line().replace(",", " ").split()[:columns]
            assert len(words) == columns, "line %d: %d columns wanted" % (self.at, columns)
            out.append([int(w) if last_integer and k == columns - 1 else float(w) for k, w in enumerate(words)])
        return out

    def limits(self):
        return [self.reals(1)[0] for _ in range(4)]


# ---- readers of the blocks -------------------------------------------------------------------

def read_feq(t, slot):
    b = {"limits": t.limits(), "cp0": t.text(3)}
    b["scalars"] = [t.reals(1)[0] for _ in range(6)]
    b["critical"], b["reducing"], b["R"] = t.reals(3), t.reals(2), t.reals(1)
    b["counts"] = t.integers(6)
    b["terms"], b["critical_rows"] = t.rows(b["counts"][0], b["counts"][1]), t.rows(b["counts"][2], 12)
    slot["HMODCP"] = b["cp0"]
    return b


def read_cpp(t, slot):
    b = {"limits": t.limits(), "reducing": t.reals(2), "counts": t.integers(7)}
    b["rows"] = t.rows(b["counts"][0] + b["counts"][1], 2)
    assert not any(b["counts"][2:])
    return b


def read_ph0(t, slot):
    b = {"limits": t.limits(), "counts": t.integers(8)}
    b["rows"] = t.rows(sum(b["counts"]), 2)
    return b


def read_lj(t, b):
    b["collision"], b["lj"], b["dilute_reducing"] = t.text(3), [t.reals(1)[0], t.reals(1)[0]], t.reals(2)


def read_b2(t, b):
    words = t.line().split()
    b["b2_reducing"] = [float(words[1]), float(words[2])]
    b["b2"] = t.rows(int(words[0]), 2)


def read_vs0(t, slot):
    b = {"limits": t.limits(), "subtag": t.text(3), "counts": t.integers(7)}
    slot["HMDETA"] = "NUL"
    if b["counts"][0]:
        read_lj(t, b)
        slot["HMDETA"] = b["collision"]
        b["dilute"] = t.rows(b["counts"][0], 2)
    if any(b["counts"][1:]):
        b["reducing"] = t.reals(3)
        b["rows"] = t.rows(sum(map(abs, b["counts"][1:])), 5, True)
    b["enhancement"] = t.text(3)
    return b


def read_vs1(t, slot):
    b = {"limits": t.limits(), "dilute_counts": t.integers(6)}
    read_lj(t, b)
    slot["HMDETA"] = b["collision"]
    b["dilute"] = t.rows(b["dilute_counts"][0], 2)
    read_b2(t, b)
    b["counts"], b["reducing"] = t.integers(6), t.reals(3)
    b["rows"] = t.rows(sum(map(abs, b["counts"])), 5, True)
    b["enhancement"] = t.text(3)
    return b


def read_vs4(t, slot):
    b = {"limits": t.limits(), "dilute_counts": t.integers(6)}
    read_lj(t, b)
    slot["HMDETA"] = b["collision"]
    b["dilute"] = t.rows(b["dilute_counts"][0], 2)
    read_b2(t, b)
    b["rows"] = t.rows(8, 4)
    b["enhancement"] = t.text(3)
    return b


def read_vs5(t, slot):
    b = {"limits": t.limits(), "dilute_counts": t.integers(6)}
    read_lj(t, b)
    slot["HMDETA"] = b["collision"]
    b["dilute"] = t.rows(b["dilute_counts"][0], 2)
    read_b2(t, b)
    words = t.line().split()
    b["chung"], b["nadd"] = [float(w) for w in words[:3]], int(words[3])
    b["rows"] = t.rows(b["nadd"], 4)
    b["enhancement"] = t.text(3)
    return b


def read_tc0(t, slot):
    b = {"limits": t.limits(), "subtag": t.text(3), "counts": t.integers(4)}
    if sum(b["counts"]):
        b["reducing"] = t.reals(3)
        b["rows"] = t.rows(sum(b["counts"]), 5, True)
    b["enhancement"] = slot["HTCXCR"] = t.text(3)
    return b


def read_tc1(t, slot):
    b = {"limits": t.limits(), "dilute_counts": t.integers(2), "dilute_reducing": t.reals(2)}
    b["dilute"] = t.rows(sum(b["dilute_counts"]), 2)
    b["counts"], b["reducing"] = t.integers(2), t.reals(3)
    b["rows"] = t.rows(sum(b["counts"]), 4)
    b["enhancement"] = slot["HTCXCR"] = t.text(3)
    return b


def read_tk(t, slot):
    b = {"limits": t.limits(), "counts": t.integers(4), "reducing": t.reals(3)}
    b["rows"] = t.rows(b["counts"][0] + b["counts"][1], 6, True)
    if b["counts"][2]:
        b["exp_reducing"] = t.reals(2)
        b["exp"] = t.rows(b["counts"][2], 5)
    return b


def read_ci1(t, slot):
    b = {"limits": t.limits()}
    b["rows"] = t.rows(t.integers(1)[0], 2, True)
    return b


def read_ecs(t, slot):
    b = {"limits": t.limits()}
    line = t.line()
    b["reference"] = [line[:3], line[3:].strip(), t.text(3), t.text(3)]
    b["lj_flag"], b["lj"] = t.integers(1)[0], [t.reals(1)[0], t.reals(1)[0]]
    b["f_int"] = t.rows(t.integers(1)[0], 4)
    for k in ("psi", "chi"):
        b[k + "_counts"] = t.integers(3)
        b[k] = t.rows(sum(b[k + "_counts"][:2]), 4)
    b["enhancement"] = slot["HTCXCRECS"] = t.text(3)
    return b


def read_st1(t, slot):
    b = {"limits": [t.reals(1)[0], t.reals(1)[0]]}
    t.line()
    t.reals(2)
    n = t.integers(1)[0]
    b["tc"] = t.reals(1)[0]
    b["rows"] = t.rows(n, 2)
    return b


def read_line(t, slot):
    """Ancillaries, melting and sublimation lines."""
    b = {"limits": [t.reals(1)[0], t.reals(1)[0]]}
    t.line()
    t.line()
    b["reducing"], b["counts"] = t.reals(2), t.integers(6)
    b["rows"] = t.rows(sum(b["counts"][:3]), 2)
    return b


READERS = {"FEQ": read_feq, "CPP": read_cpp, "PH0": read_ph0, "VS0": read_vs0, "VS1": read_vs1, "VS4": read_vs4,
           "VS5": read_vs5, "TC0": read_tc0, "TC1": read_tc1, "TK1": read_tk, "TK3": read_tk, "TK6": read_tk,
           "CI1": read_ci1, "ECS": read_ecs, "ST1": read_st1}


def read_header(t):
    h = {"name": t.text(60).split("!")[0].rstrip(), "cas": t.text(12).rstrip(), "full": t.text(255).rstrip(),
         "formula": t.text(255).rstrip(), "synonym": t.text(255).rstrip()}
    h["numbers"] = [t.reals(1)[0] for _ in range(8)]
    h["reference"] = t.text(3)
    assert not h["reference"].startswith("OT")
    h["version"] = t.reals(1)[0]
    h["UN"], h["family"], h["heat"] = "", "", -1.0
    while True:
        line = t.line()
        if not line.strip():
            return h
        before, mark, after = line.partition("!")
        if mark and after[:2] == "UN":
            h["UN"] = before.strip()
        elif mark and after[:2] == "fa":
            h["family"] = before.strip()
        elif mark and after[:2] == "he":
            h["heat"] = float(before)


def read_fluid(path, forced=None):
    """Follow the choice of sections as for a pure fluid; returns header, blocks read, chosen tags."""
    t = Text(path)
    header = read_header(t)
    slot = {"EOS": "NBS", "ETA": "NBS", "TCX": "NBS", "STN": "NBS", "HMODCP": "NBS", "HMDETA": "NUL", "HTCXCR": "NUL",
            "HTCXCRECS": "NUL"}
    slot.update(forced or {})
    blocks, later = {}, {}
    tag, eos_read, cp_state, eta_read, tcx_read = "   ", False, 0, False, False
    while True:
        line = t.line()  # an exhausted file raises: there must be an END
        star, flag = line[:1], line[1:4].ljust(3)
        if star == "!":
            continue
        if star in ("#", "@"):
            tag = t.text(3)
            while t.line().startswith("?"):
                pass
            assert t.lines[t.at - 1] == "!", "line %d: lone ! wanted" % t.at
        elif flag in KEYS:
            raise AssertionError("line %d would be taken for the key %s" % (t.at, flag))
        if flag == "END":
            break
        if flag not in KEYS or star not in ("#", "@"):
            continue
        if flag == "EOS":
            if star == "#" and slot["EOS"] == "NBS":
                slot["EOS"] = tag
            if slot["EOS"] == tag and not eos_read:
                blocks["EOS"] = READERS[tag](t, slot)
                eos_read = True
        elif flag == "AUX":
            if tag[:2] in ("CP", "PH") and slot["HMODCP"] == tag:
                blocks[tag] = READERS[tag](t, slot)
                cp_state = 2
            elif tag == "CPP" and cp_state == 0 and (slot["HMODCP"][:2] == "CP" or slot["HMODCP"] == "NBS"):
                blocks[tag] = READERS[tag](t, slot)
                cp_state = 1
            elif tag == "CI1" and slot["HMDETA"] == tag or tag in ("TK1", "TK3") and slot["HTCXCR"] == tag \
                    or tag == "TK6" and slot["HTCXCRECS"] == tag:
                blocks[tag] = READERS[tag](t, slot)
        elif flag == "TRN":
            if star == "#":
                for k in ("ETA", "TCX"):
                    if slot[k] == "NBS":
                        slot[k] = tag
                eta_read = tcx_read = True
            else:
                if not eta_read:
                    later["ETA"] = tag
                if not tcx_read:
                    later["TCX"] = tag
            blocks["TRN"] = READERS[tag](t, slot)
        elif flag in ("ETA", "TCX", "STN"):
            if star == "#" and slot[flag] == "NBS":
                slot[flag] = tag
            if tag == slot[flag]:
                blocks[flag] = READERS[tag](t, slot)
                eta_read, tcx_read = eta_read or flag == "ETA", tcx_read or flag == "TCX"
        elif star == "#":
            slot[flag] = tag
            blocks[flag] = read_line(t, slot)
    for k, read in (("ETA", eta_read), ("TCX", tcx_read)):
        if not read:
            slot[k] = later[k]
    return header, blocks, slot


# ---- comparison with the tables --------------------------------------------------------------

class Compare:
    def __init__(self):
        self.bad = []
        self.numbers = 0

    def same(self, where, got, want):
        """Equal, numbers bit for bit, lists place by place."""
        if isinstance(want, (list, tuple)):
            if len(got) != len(want):
                self.bad.append("%s: %d entries, table has %d" % (where, len(got), len(want)))
                return
            for k, (g, w) in enumerate(zip(got, want)):
                self.same("%s[%d]" % (where, k), g, w)
        elif isinstance(want, (int, float)):
            self.numbers += 1
            if float(got).hex() != float(want).hex():
                self.bad.append("%s: %r, table has %r" % (where, got, want))
        elif got != want:
            self.bad.append("%s: %r, table has %r" % (where, got, want))


def four(limits):
    return [limits["tmin"], limits["tmax"], limits["pmax"], limits["dmax"]]


def check_header(c, d, h):
    i, k = d["identity"], d["constants"]
    c.same("short name", h["name"], i["short_name"])
    c.same("CAS", h["cas"], i["cas"])
    c.same("full name", h["full"], i["full_name"])
    c.same("formula", h["formula"].split("{")[0].strip(), i["formula"])
    c.same("atoms", h["formula"].split("{")[1].rstrip("}"), i["atoms"])
    c.same("synonym", h["synonym"], i["synonym"] or i["short_name"])
    c.same("header", h["numbers"], [k[n] for n in ("molar_mass", "ttrip", "tnbp", "tcrit", "pcrit", "dcrit", "acentric",
                                                   "dipole_debye")])
    c.same("reference state", h["reference"], k["default_reference_state"])
    c.same("version", h["version"], 10.0)
    c.same("UN", h["UN"], i["un_number"] or "")
    c.same("family", h["family"], i["family"])
    hoc = i["gross_heat_of_combustion_kJ_mol"]
    c.same("heat of combustion", h["heat"], -1.0 if hoc is None else hoc)


def check_eos(c, d, b):
    e, k, n = d["eos"], d["constants"], d["eos"]["counts"]
    c.same("EOS limits", b["limits"], four(e))
    c.same("EOS constants", b["scalars"], [k[x] for x in ("molar_mass", "ttrip", "ptrip", "dtrip_liq", "tnbp", "acentric")])
    c.same("EOS critical", b["critical"], [k["tcrit"], k["pcrit"], k["dcrit"]])
    c.same("EOS reducing", b["reducing"], e["reducing"])
    c.same("EOS R", b["R"], [e["gas_constant"]])
    c.same("EOS counts", b["counts"], [n[x] for x in ("nterm", "ncoeff", "ncrt", "ncfcrt", "nspare", "ncfsp")])
    c.same("EOS terms", b["terms"], e["terms"])
    c.same("EOS critical rows", b["critical_rows"], e["critical_rows"])
    c.same("EOS cp0 tag", b["cp0"], e["cp0_tag"])


def check_ideal(c, d, blocks):
    p = d["ideal_gas"]["cpp"]
    c.same("CPP limits", blocks["CPP"]["limits"], four(p))
    c.same("CPP reducing", blocks["CPP"]["reducing"], [p["tred"], p["cred"]])
    c.same("CPP counts", blocks["CPP"]["counts"], p["counts"])
    c.same("CPP rows", blocks["CPP"]["rows"], p["power"] + p["planck_einstein"])


def check_ph0(c, d, b):
    p = d["ideal_gas"]["ph0"]
    c.same("PH0 limits", b["limits"], four(p))
    c.same("PH0 counts", b["counts"], p["counts"])
    c.same("PH0 rows", b["rows"], p["log"] + p["power"] + p["planck_einstein"])


def built_in_rows(table):
    """The rows that a correlation of the program finds, in the order dilute gas, background."""
    return ([[x, e, 0, 0, 0] for x, e in table.get("dilute_rows", [])] + [[x, 0, 0, 0, 0] for _, x in table.get("constant_rows", [])]
            + [[x, i, j, 0, 0] for x, i, j in table.get("background_rows", [])])


def check_viscosity(c, v, b):
    c.same("ETA limits", b["limits"], four(v["limits"]))
    c.same("ETA enhancement", b["enhancement"], v["enhancement_tag"])
    if "dilute" in b:
        c.same("ETA collision", b["collision"], v["collision_tag"])
        c.same("ETA sigma, epsilon", b["lj"], [v["sigma_nm"], v["eps_over_k"]])
        c.same("ETA dilute reducing", b["dilute_reducing"], [v["dilute_tred"], v["dilute_etared"]])
        c.same("ETA dilute", b["dilute"], v["dilute"])
    if v["tag"] == "VS0":
        c.same("ETA subtag", b["subtag"], v["subtag"])
        if "residual_reducing" in v:
            r = v["residual_reducing"]
            c.same("ETA reducing", b["reducing"], [r["tred"], r["dred"], r["etared"]])
            c.same("ETA rows", b["rows"], built_in_rows(v))
            n = len(v.get("dilute_rows", []))
            c.same("ETA counts", b["counts"], [len(v.get("dilute", [])), n, len(b["rows"]) - n, 0, 0, 0, 0])
        return
    c.same("ETA dilute counts", b["dilute_counts"], v["dilute_counts"])
    c.same("ETA b2 reducing", b["b2_reducing"], [v["b2"]["tred"], v["b2"]["etared"]])
    c.same("ETA b2", b["b2"], v["b2"]["terms"])
    if v["tag"] == "VS1":
        r = v["residual"]
        parts = [r[k] for k in ("poly", "num", "den", "expnum", "expden")]
        c.same("ETA counts", b["counts"], [r["ndel0"]] + [len(x) for x in parts])
        c.same("ETA reducing", b["reducing"], [r["tred"], r["dred"], r["etared"]])
        c.same("ETA rows", b["rows"], [x + [0, 0, 0] for x in r["delta0"]] + sum(parts, []))
    elif v["tag"] == "VS4":
        f = v["friction"]
        c.same("ETA friction", b["rows"], [f[k] + [f["gamma_exponents"][k]] for k in "abcABCDE"])
    elif v["tag"] == "VS5":
        q = v["chung"]
        c.same("ETA Chung", b["chung"], [q["acentric"], q["dipole_reduced"], q["association_kappa"]])
        c.same("ETA Chung rows", b["nadd"], q["nadd"])


def check_conductivity(c, k, b):
    c.same("TCX limits", b["limits"], four(k["limits"]))
    c.same("TCX enhancement", b["enhancement"], k["enhancement_tag"])
    if k["tag"] == "TC0":
        c.same("TCX subtag", b["subtag"], k["subtag"])
        if "reducing" in k:
            r = k["reducing"]
            c.same("TCX reducing", b["reducing"], [r["tred"], r["dred"], r["kred"]])
            c.same("TCX rows", b["rows"], built_in_rows(k))
            n = len(k.get("dilute_rows", []))
            c.same("TCX counts", b["counts"], [n, 0, len(b["rows"]) - n, 0])
        return
    c.same("TCX dilute counts", b["dilute_counts"], k["dilute_counts"])
    c.same("TCX dilute reducing", b["dilute_reducing"], [k["dilute_tred"], k["dilute_kred"]])
    c.same("TCX dilute", b["dilute"], k["dilute_num"] + k["dilute_den"])
    c.same("TCX counts", b["counts"], k["background_counts"])
    c.same("TCX reducing", b["reducing"], [k["background_tred"], k["background_dred"], k["background_kred"]])
    c.same("TCX rows", b["rows"], k["background_num"] + k["background_den"])


def check_enhancement(c, e, b):
    c.same(e["tag"] + " limits", b["limits"], four(e["limits"]))
    c.same(e["tag"] + " counts", b["counts"], e["counts"])
    c.same(e["tag"] + " reducing", b["reducing"], e["reducing"])
    if e["tag"] == "TK1":
        c.same("TK1 rows", b["rows"], [[x[k] for k in ("c", "a", "b", "e", "f", "int")] for x in e["num"] + e["den"]])
        c.same("TK1 exponent reducing", b["exp_reducing"], e["exp_reducing"])
        c.same("TK1 exponent", b["exp"], [[x[k] for k in ("c", "a", "i", "b", "j")] for x in e["exp"]])
    else:
        c.same(e["tag"] + " rows", b["rows"], [[x, 0, 0, 0, 0, 0] for _, x in e["rows"]])


def check_ecs(c, d, b):
    e = d["ecs"]
    c.same("TRN limits", b["limits"], four(e["limits"]))
    c.same("TRN reference", b["reference"], [e["reference_eos_tag"], e["reference_fluid"], e["reference_viscosity_tag"],
                                             e["reference_conductivity_tag"]])
    c.same("TRN flag", b["lj_flag"], e["lj_flag"])
    c.same("TRN sigma, epsilon", b["lj"], [e["sigma_nm"], e["eps_over_k"]])
    for k in ("f_int", "psi_counts", "psi", "chi_counts", "chi"):
        c.same("TRN " + k, b[k], e[k])
    c.same("TRN enhancement", b["enhancement"], e["enhancement_tag"])


def check_line(c, name, s, b):
    c.same(name + " limits", b["limits"], [s["tmin"], s["tmax"]])
    c.same(name + " reducing", b["reducing"], [s["tred"], s["vred"] if "vred" in s else s["pred"]])
    c.same(name + " counts", b["counts"], s["counts"])
    c.same(name + " rows", b["rows"], s["terms"] if "terms" in s else s["terms1"] + s["terms2"] + s["terms3"])


def check_fluid(c, d, path):
    header, blocks, slot = read_fluid(path)
    check_header(c, d, header)
    c.same("models", [slot[k] for k in ("EOS", "HMODCP", "ETA", "TCX", "STN")],
           [d["eos"]["tag"], d["eos"]["cp0_tag"], d["viscosity"]["tag"], d["conductivity"]["tag"],
            (d["surface_tension"] or d["surface_tension_estimate"])["tag"]])
    check_eos(c, d, blocks["EOS"])
    check_ideal(c, d, blocks)
    if d["viscosity"]["tag"] != "ECS":
        check_viscosity(c, d["viscosity"], blocks["ETA"])
    ci = d["collision_integral"]
    if ci and ci["tag"] == "CI1":
        c.same("CI1 limits", blocks["CI1"]["limits"], four(ci))
        c.same("CI1 rows", blocks["CI1"]["rows"], ci["terms"])
    if d["conductivity"]["tag"] != "ECS":
        check_conductivity(c, d["conductivity"], blocks["TCX"])
    e = d["critical_enhancement"]
    if e:
        check_enhancement(c, e, blocks[e["tag"]])
    check_ecs(c, d, blocks["TRN"])
    check_enhancement(c, d["ecs_enhancement"], blocks["TK6"])
    s = d["surface_tension"] or d["surface_tension_estimate"]
    c.same("STN", [blocks["STN"]["limits"], blocks["STN"]["tc"], blocks["STN"]["rows"]],
           [[s["tmin"], s["tmax"]], s["tc"], s["terms"]])
    for key, name in (("PS ", "ps"), ("PL ", "pl"), ("DL ", "dl"), ("DV ", "dv")):
        a = d["ancillaries"].get(name)
        if a:
            c.same(key + "tag", slot[key], a["tag"])
            check_line(c, key, a, blocks[key])
    for key, name in (("MLT", "melting"), ("SBL", "sublimation")):
        c.same(key + " present", key in blocks, bool(d[name]))
        if d[name]:
            c.same(key + " tag", slot[key], d[name]["tag"])
            check_line(c, key, d[name], blocks[key])
    # Every alternative can be forced, and is then the one that is read.
    if d["ideal_gas"]["ph0"]:
        t = Text(path)
        while not t.line().startswith("PH0"):
            pass
        while t.line().startswith("?"):
            pass
        check_ph0(c, d, read_ph0(t, {}))
    for name, key, check in (("viscosity", "ETA", check_viscosity), ("conductivity", "TCX", check_conductivity)):
        alt = d[name + "_alternative"]
        if alt and alt["tag"] != d[name]["tag"]:
            _, forced_blocks, forced = read_fluid(path, {key: alt["tag"]})
            c.same(key + " forced", forced[key], alt["tag"])
            if alt["tag"] == "ECS":
                c.same(key + " by ECS", key in forced_blocks, False)
            else:
                check(c, alt, forced_blocks[key])


# ---- mixtures --------------------------------------------------------------------------------

def check_mixture_parameters(c, path, pairs, functions, critical, known_estimates):
    t = Text(path)
    c.same("BNC model", t.text(3), "HMX")
    c.same("BNC version", int(t.text(2)) > 0, True)
    records, rules = {}, {}
    while True:
        line = t.line()
        key = line[:4]
        if key == "@END":
            break
        if key == "#MXM":
            head = t.line()
            while t.line().startswith("?"):
                pass
            assert t.lines[t.at - 1] == "!"
            names = t.line()
            rule = {"description": head[3:].strip(), "names": [names[9 * k:9 * k + 8].strip() for k in range(6)],
                    "ideal": t.reals(6), "counts": t.integers(5)}
            n1, c1, f, n2, c2 = rule["counts"]
            rule["polynomial"], rule["exponential"] = t.rows(n1, c1 + (f == 1)), t.rows(n2, c2)
            assert head[:3] not in rules
            rules[head[:3]] = rule
        elif key == "#BNC":
            assert t.line() == "BNC"
            while t.line().startswith("?"):
                pass
            citation, cas, fields = "", "", {}
            while t.lines[t.at].startswith("@END") is False:
                line = t.line()
                if line.startswith("?"):
                    citation += line[1:] + "\\"
                elif line.startswith("!"):
                    assert cas not in records and citation and len(citation) <= 255
                    records[cas] = (citation, fields)
                    citation, cas, fields = "", "", {}
                else:
                    cas = line[:26].strip() or cas
                    assert "/" in cas
                    fields[line[26:29]] = [float(w) for w in line[29:].split()[:6]]
    published = {frozenset(p["cas"]) for p in pairs["pairs"]}
    estimated = [cas for cas in critical if frozenset(cas.split("/")) not in published]
    c.same("pairs", len(records), len(pairs["pairs"]) + len(estimated))
    for cas in estimated:
        citation, fields = records[cas]
        c.same(cas + " rest", fields["LJ6"][1:], [0.0, 0.0, 1.0, 1.0, 0.0])
        for tag in ("TC1", "VC1"):
            c.same(cas + " " + tag, fields[tag], critical[cas][tag])
        c.same(cas + " source", "have been estimated" in citation, True)
    for p in known_estimates:
        for cas in ("/".join(p["cas"]), "/".join(reversed(p["cas"]))):
            if cas in records:
                c.same(cas + " zeta", "%.6g" % records[cas][1]["LJ6"][0], "%.6g" % p["estimate"]["F1_K"])
    for p in pairs["pairs"]:
        cas = "/".join(p["cas"])
        citation, fields = records[cas]
        c.same(cas, fields[p["tag"]], p["fmix"])
        for tag in ("TC1", "VC1"):
            c.same(cas + " " + tag, fields[tag], critical.get(cas, {}).get(tag, [0.0] * 6))
        c.same(cas + " tags", sorted(fields), sorted([p["tag"], "TC1", "VC1"]))
        c.same(cas + " source", str(pairs["citations"][p["citation"]]["year"]) in citation, True)
        c.same(cas + " rule", p["tag"] in rules, True)
    c.same("rules", len(rules), len(functions["functions"]))
    for f in functions["functions"]:
        rule = rules[f["tag"]]
        c.same(f["tag"], [rule["description"], rule["names"], rule["ideal"], rule["counts"], rule["polynomial"],
                          rule["exponential"]],
               [f["description"], f["parameter_names"], f["ideal_values"],
                [f["counts"][k] for k in ("n1", "c1", "f", "n2", "c2")], f["polynomial"], f["exponential"]])


def check_blend(c, path, blend, fluids, points):
    t = Text(path)
    c.same("name", t.line(), blend["name"])
    head = t.reals(4)
    if blend["name"] in points:
        c.same("critical point", head[1:], points[blend["name"]])
    n = t.integers(1)[0]
    files = [t.line() for _ in range(n)]
    x = [t.reals(1)[0] for _ in range(n)]
    c.same("flag", t.integers(1), [0])
    c.same("components", files, [k + ".FLD" for k in blend["components"]])
    mass = [a * fluids[k]["constants"]["molar_mass"] for a, k in zip(x, blend["components"])]
    if abs(sum(x) - 1.0) > 1e-14:
        c.bad.append("mole fractions add up to %r" % sum(x))
    if abs(head[0] / sum(mass) - 1.0) > 1e-12:
        c.bad.append("molar mass %r, of the components %r" % (head[0], sum(mass)))
    for m, w in zip(mass, blend["mass_fractions"]):
        c.numbers += 1
        if abs(m / sum(mass) - w / sum(blend["mass_fractions"])) > 1e-14:
            c.bad.append("mass fraction %r, table has %r" % (m / sum(mass), w))


def load(*path):
    with open(os.path.join(HERE, "fluid_tables", *path), encoding="utf-8") as f:
        return json.load(f)


def load_optional(name):
    return load(name) if os.path.exists(os.path.join(HERE, "fluid_tables", name)) else {}


def guarded(c, check, *args):
    """A file that cannot be read at all is a difference like any other."""
    try:
        check(c, *args)
    except (AssertionError, IndexError, KeyError, OSError, ValueError) as e:
        c.bad.append("cannot be read: %s %s" % (type(e).__name__, e))


def report(name, c):
    for line in c.bad:
        print("%-12s %s" % (name, line))
    return len(c.bad), c.numbers


def main():
    parser = argparse.ArgumentParser(description="compare the written data files with the tables")
    parser.add_argument("--data", default=os.path.join(HERE, "..", "data"))
    data = parser.parse_args().data
    names = sorted(n[:-5] for n in os.listdir(os.path.join(HERE, "fluid_tables", "fluids")))
    fluids = {n: load("fluids", n + ".json") for n in names}
    bad = numbers = 0
    for n in names:
        c = Compare()
        guarded(c, check_fluid, fluids[n], os.path.join(data, "fluids", n + ".FLD"))
        b, k = report(n, c)
        bad, numbers = bad + b, numbers + k
    c = Compare()
    guarded(c, check_mixture_parameters, os.path.join(data, "fluids", "HMX.BNC"),
            load("mixtures", "binary_pairs.json"), load("mixtures", "departure_functions.json"),
            load_optional("critical_lines.json"),
            load("mixtures", "blends.json")["pairs_without_data"])
    b, k = report("HMX.BNC", c)
    bad, numbers = bad + b, numbers + k
    blends = load("mixtures", "blends.json")["blends"]
    points = load_optional("blend_critical_points.json")
    for blend in blends:
        c = Compare()
        guarded(c, check_blend, os.path.join(data, "mixtures", blend["file"]), blend, fluids, points)
        b, k = report(blend["name"], c)
        bad, numbers = bad + b, numbers + k
    print("%d fluids, %d blends, %d numbers compared, %d differences" % (len(names), len(blends), numbers, bad))
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
