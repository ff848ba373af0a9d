#!/usr/bin/env python3
"""Write docs/data-sources.md from the tables: every correlation with citation, range, uncertainty.

    python3 tools/make_data_sources.py
"""
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from make_fluid_files import (HERE, citation_text, load, load_fluids, load_optional, number,  # noqa: E402
                              surface_tension_of)

ORDER = ["R11", "R12", "R22", "R23", "R113", "R114", "R115", "R116", "R123", "R124", "R125", "R134A", "R141B", "R142B",
         "R143A", "R152A", "R218", "R227EA", "R236FA", "R245FA", "PROPANE", "BUTANE", "ISOBUTAN", "AMMONIA", "CO2",
         "ETHYLENE", "R1234YF", "R1234ZE", "PROPYLEN", "R32", "IPENTANE", "PENTANE", "R1233ZD", "NITROGEN", "C12",
         "CF3I",
         "R1234ZEZ", "R1336MZZ", "R1336MZE", "R1224YD", "R1243ZF", "R1123", "R1132A", "R1132E", "R1130E", "R161", "R41",
         "R13", "R14", "R40", "R21", "RC318", "R236EA", "R245CA", "R365MFC", "ETHANE", "METHANE", "CYCLOPEN", "CYCLOPRO",
         "HEXANE", "HEPTANE", "TOLUENE", "MM", "MDM", "NOVEC649", "WATER", "DME", "SO2", "ARGON", "OXYGEN", "HYDROGEN",
         "N2O", "KRYPTON", "XENON", "CO", "NEOPENTN", "IHEXANE", "OCTANE", "CYCLOHEX", "BENZENE", "1BUTENE", "IBUTENE",
         "C2BUTENE", "T2BUTENE", "RE143A", "MD2M", "ACETONE", "ETHANOL"]


class Sources:
    """Numbers the citations in the order of their first use."""

    def __init__(self):
        self.texts = []

    def ref(self, c):
        text = citation_text(c)
        if text not in self.texts:
            self.texts.append(text)
        return "[%d]" % (self.texts.index(text) + 1)


def extent(b):
    text = "%s to %s K" % (number(b["tmin"]), number(b["tmax"]))
    return text + (", %s MPa" % number(b["pmax"] / 1000) if b.get("pmax") else "")


def row(*cells):
    return "| " + " | ".join(str(c) if c else "" for c in cells) + " |"


def transport_row(s, d, name, statements):
    b = d[name]
    label = name[0].upper() + name[1:]
    if b["tag"] == "ECS":
        e = d["ecs"]
        note = "corresponding states, reference fluid %s" % e["reference_fluid"].split(".")[0]
        if b.get("estimated"):
            note += "; estimated"
        return row(label, "ECS", s.ref(b["citation"]), extent(b["limits"]), "not recorded", note)
    notes = [b["limits_note"] if b.get("limits_note") else None, b.get("note"), "estimated" if b.get("estimated") else None]
    if b.get("b2_citation"):
        notes.insert(0, "second viscosity virial coefficient %s" % s.ref(b["b2_citation"]))
    return row(label, b["tag"], s.ref(b["citation"]), extent(b["limits"]), statements.get(name, "not recorded"),
               "; ".join(n for n in notes if n))


def estimated_list(d):
    e = d["ecs"]["estimated"]
    out = []
    if e["sigma_eps"]:
        out.append("sigma and epsilon/k")
    out += [k for k in ("psi", "chi", "f_int") if e[k]]
    text = "transport by corresponding states: " + ", ".join(out) if out else ""
    if d["ecs"].get("psi_note"):
        text += " (%s)" % d["ecs"]["psi_note"]
    more = [text] if text else []
    if d["ecs_enhancement"].get("estimated"):
        more.append("critical enhancement under corresponding states: universal constants")
    return more


def estimated_transport(d):
    return d["viscosity"].get("estimated") or d["conductivity"].get("estimated")


def fitted_psi(d):
    """Whether the shape factor of an estimated fluid was fitted to viscosities."""
    return bool(d["ecs"].get("psi_note"))


def fluid_section(s, d, statements):
    i, c = d["identity"], d["constants"]
    out = ["", "### %s: %s" % (d["name"], i["full_name"]), "",
           "Molar mass %s g/mol, triple point %s K, normal boiling point %s K, critical point %s K, %s kPa, %s mol/L."
           % (number(c["molar_mass"]), number(c["ttrip"]), number(c["tnbp"]), number(c["tcrit"]),
              number(c["pcrit"]), number(c["dcrit"])), "",
           "| Property | Model | Source | Range | Stated uncertainty | Remarks |", "|---|---|---|---|---|---|"]
    e = d["eos"]
    out.append(row("Equation of state", e["tag"], s.ref(e["citation"]), extent(e), e["uncertainty"] or "not recorded",
                   "modified Benedict-Webb-Rubin equation in Helmholtz form" if d["name"] in ("R123", "R152A") else ""))
    for alt in d.get("eos_alternatives", []):
        out.append(row("Equation of state (alternative)", alt["tag"], s.ref(alt["citation"]), extent(alt),
                       alt.get("uncertainty") or "not recorded", alt.get("note")))
    g = d["ideal_gas"]
    out.append(row("Ideal gas", "CPP, PH0" if g["ph0"] else "CPP", s.ref(g["citation"]), extent(g["cpp"]), "", ""))
    for name in ("viscosity", "conductivity"):
        out.append(transport_row(s, d, name, statements))
        alt = d[name + "_alternative"]
        if alt and alt["tag"] not in (d[name]["tag"], "ECS"):
            out.append(row("%s (alternative)" % (name[0].upper() + name[1:]), alt["tag"], s.ref(alt["citation"]),
                           extent(alt["limits"]), "not recorded", alt.get("note")))
    if d["critical_enhancement"]:
        b = d["critical_enhancement"]
        out.append(row("Critical enhancement", b["tag"], s.ref(b["citation"]), extent(b["limits"]), "", ""))
    e = d["ecs"]
    cites = []
    for k, text in (("sigma_eps", "sigma, epsilon/k"), ("psi", "psi"), ("chi", "chi")):
        if e["citation"].get(k) and not e["estimated"][k]:
            cites.append("%s %s" % (text, s.ref(e["citation"][k])))
    out.append(row("Corresponding states", "ECS, TK6", "; ".join(cites) or "estimated", extent(e["limits"]), "",
                   "; ".join(x for x in ["reference fluid " + e["reference_fluid"].split(".")[0], e.get("sigma_note"),
                                         e.get("note")] if x)))
    b = surface_tension_of(d)
    out.append(row("Surface tension", b["tag"], s.ref(b["citation"]), extent(b), "not recorded",
                   "; ".join(x for x in ("estimated" if b.get("estimated") else None, b.get("note")) if x)))
    for name, text in (("melting", "Melting line"), ("sublimation", "Sublimation line")):
        b = d[name]
        if b:
            out.append(row(text, b["tag"], s.ref(b["citation"]), extent(b), "",
                           "; ".join(x for x in (b.get("citation_note"), b.get("note")) if x)))
    a = d["ancillaries"]
    out.append(row("Ancillaries", ", ".join(a[k]["tag"] for k in ("ps", "dl", "dv")), "fit", extent(a["ps"]),
                   "", "largest deviation from the equation of state: vapor pressure %s %%, liquid density %s %%, vapor "
                       "density %s %%" % tuple(a[k]["max_dev_percent"] for k in ("ps", "dl", "dv"))))
    notes = [v for k, v in c.items() if k.endswith("_note")]
    if not c["dipole_certain"]:
        notes.append("the dipole moment is less certain")
    if notes:
        out += ["", "; ".join(n[0].upper() + n[1:] if not k else n for k, n in enumerate(notes)) + "."]
    est = estimated_list(d)
    if est:
        out += ["", "Estimated: " + "; ".join(est) + "."]
    return out


def mixture_section(s, critical):
    pairs = load("mixtures", "binary_pairs.json")
    functions = load("mixtures", "departure_functions.json")["functions"]
    blends = load("mixtures", "blends.json")
    out = ["", "## Mixtures", "",
           "`data/fluids/HMX.BNC` holds %d published binary pairs among the %d fluids, estimates for the blends below and for the other pairs of the library's fluids, and %d departure functions."
           % (len(pairs["pairs"]), len(ORDER), len(functions)), "", "| Source of the pair's parameters | Pairs |", "|---|---|"]
    for key, c in pairs["citations"].items():
        out.append(row(s.ref(c), sum(p["citation"] == key for p in pairs["pairs"])))
    out += ["", "| Rule | Function | Pairs with it | Source |", "|---|---|---|---|"]
    for f in functions:
        users = ["%s + %s" % tuple(p["fluids"]) for p in pairs["pairs"] if p["tag"] == f["tag"] and p["departure"]]
        out.append(row(f["tag"], f["description"], ", ".join(users) or "none", s.ref(f["citation"])))
    out += ["", "KW0 serves every pair without a departure function (strength 0).", "",
            "Pairs of predefined blends without published parameters; the program estimates their mixing term:", "",
            "| Pair | Blends |", "|---|---|"]
    for p in blends["pairs_without_data"]:
        out.append(row(" + ".join(p["fluids"]), ", ".join(p["blends"])))
    out += ["", "The coefficients of the critical lines (TC1, VC1) are %s."
            % ("fitted to critical points of the binary mixtures found with the equations themselves"
               if critical else "zero: the critical line is that of the linear mixing of the pure fluids"),
            "", "The compositions of the %d blends are nominal mass fractions; the files hold the mole fractions made "
            "from them." % len(blends["blends"])]
    return out


def main():
    fluids = load_fluids()
    assert sorted(ORDER) == sorted(fluids)
    statements = load_optional("statements.json")
    s = Sources()
    body = ["", "## Pure fluids"]
    for name in ORDER:
        body += fluid_section(s, fluids[name], statements.get(name, {}))
    body += mixture_section(s, load_optional("critical_lines.json"))
    own = [n for n in ORDER if fluids[n]["viscosity"]["tag"] != "ECS" and fluids[n]["conductivity"]["tag"] != "ECS"]
    head = ["# Data sources", "",
            "Every correlation behind the data files, with its source, range and the uncertainty its authors state. "
            "This page is made by `tools/make_data_sources.py` from the tables in `tools/fluid_tables`; do not edit it "
            "by hand. \"Not recorded\" means that the tables hold no statement, not that the paper makes none. "
            "Statements are paraphrased and approximate.", "",
            "The format of the files is explained in `fluid-files.md`.", "",
            "## What is estimated or computed", "",
            "| Fluids | Block | State |", "|---|---|---|",
            row("all", "maximum density", "computed: liquid density at the upper pressure limit and the lower "
                                          "temperature limit, or on the melting line"),
            row("all", "ancillaries", "fitted to the saturation states of the equation of state in the same file"),
            row("all", "pressure and densities at the triple point, normal boiling point",
                "computed from the equation of state"),
            row(", ".join(own), "psi, chi, f_int of the corresponding-states block",
                "set to 1, 1 and 1.32e-3: hardly used, since the fluids have their own correlations"),
            row(", ".join(n for n in ORDER if fluids[n]["ecs"]["estimated"]["sigma_eps"]), "sigma, epsilon/k",
                "estimated: sigma = 0.0809 nm (Vc in cm3/mol)^(1/3), epsilon/k = Tc/1.2593"),
            row(", ".join(n for n in ORDER if estimated_transport(fluids[n]) and fitted_psi(fluids[n])), "viscosity and conductivity",
                "corresponding states with estimated parameters; psi fitted to one to three handbook viscosities of the liquid, "
                "from which all but R113 were up to 54 % away before the fit; CYCLOPEN has its own conductivity"),
            row(", ".join(n for n in ORDER if estimated_transport(fluids[n]) and not fitted_psi(fluids[n])),
                "viscosity and conductivity",
                "corresponding states with estimated parameters, compared with nothing: errors of up to 50 % must be expected; "
                "DME has its own viscosity"),
            row(", ".join(n for n in ORDER if (surface_tension_of(fluids[n]) or {}).get("estimated")), "surface tension",
                "no published correlation at hand: corresponding states, 7 % high for R134a at 273 K"),
            row("METHANE, ETHANE, BENZENE, TOLUENE, HYDROGEN", "limits of viscosity and conductivity",
                "narrower than those of the equation of state; of METHANE and ETHANE from memory, of the others from the titles "
                "of the papers"),
            row("HYDROGEN", "viscosity", "the exponential of the published form re-expressed by 40 rows: 1.2 % at most, 0.4 % root "
                                         "mean square, 14 to 1000 K below 200 MPa"),
            row("ETHANE", "critical enhancement", "the crossover model in place of the enhancement of the paper: 0.4 % at "
                                                  "the printed states"),
            row("SO2, BENZENE", "surface tension", "two terms fitted to the published sum, which is not positive near the "
                                                   "critical point"),
            row("R115", "corresponding states", "the reference fluid R134A of the published set is inferred"),
            row("R1234YF, R1234ZE", "dilute gas viscosity", "published quotient of polynomials re-expressed as a "
                                                            "collision integral, within 4e-5"),
            row("ETHYLENE", "melting line", "one fit through two published branches"),
            row("PROPYLEN", "melting line", "continues the first of two published branches"),
            row(", ".join(n for n in ORDER if not fluids[n]["constants"]["dipole_certain"]), "dipole moment",
                "less certain"),
            row("PENTANE", "friction-theory viscosity (alternative)", "doubtful: the printed constants do not "
                                                                     "reproduce the viscosity of the liquid"),
            row("R123, R152A", "BWR equation of state (alternative)",
                "the 32 coefficients are computed from the equivalent Helmholtz form of the same paper, see "
                "`tools/benedict.py`"),
            "", "No fluid has a bubble-pressure ancillary (PL): each is a pure fluid with one saturation curve. "
            "A sublimation line is given for CO2 only. Of two correlations for one property with the same model tag a "
            "file can hold one; the former conductivity correlation of AMMONIA stands in the tables only.", "",
            "Ammonia and water: the coefficients of R. Tillner-Roth and D. G. Friend (1998) were set down from memory and "
            "proved by the check values of the IAPWS guideline G4-01, six pressures and three differences of the Helmholtz "
            "energy, of which every printed digit is met with the pure equations of the paper, which AMMONIA and WATER have. "
            "[fluid-files.md](fluid-files.md#ammonia-and-water) tells of their limits.", "",
            "The estimates of viscosity, conductivity and surface tension are marked in the fluid files by a source line "
            "`?Estimated: viscosity` and so on in the section of the default model.", "",
            "`data/refrigerants.json` holds designations, other names, safety classes, ozone depletion and global warming "
            "potentials. Classes and potentials were set down from memory of the sources named there and were compared with "
            "nothing; compare them before anything official rests on them."]
    program = [
        "", "## Models in the program", "",
        "Numbers that belong to a model and not to a fluid stand in the sources.", "",
        "| Model | Numbers | Checked by |", "|---|---|---|",
        row("AGA8 detail characterization (`MIX_AGA8`)",
            "58 terms, 21 components, 61 pairs of AGA Report No. 8 (2nd edition 1992, 2nd printing 1994) and "
            "ISO 12213-2; ideal gases of M. Jaeschke, P. Schley, Int. J. Thermophys. 16, 1381 (1995), as in ISO 20765-1",
            "compression factors of gas 1 of ISO 12213-2, annex C, to the last printed digit; published check values of "
            "a gas of all 21 components at 400 K and 50 MPa (density, derivatives, heat capacities, speed of sound) "
            "within 1e-13"),
        row("Peng-Robinson (`CORE_PR`)", "D.-Y. Peng, D. B. Robinson, Ind. Eng. Chem. Fundam. 15, 59 (1976); volume "
                                         "shift a polynomial in the acentric factor",
            "the pressure in the form of the authors; vapor pressures within 3 %"),
        row("Melting lines of water (`CORE_MLT`)", "IAPWS R14-08(2011)", "the check values of the release"),
        row("Extended corresponding states (`CORE_ECS`)", "none: no fluid file gives shape factors",
            "a fluid by itself as reference; a made-up fluid of the tests"),
        row("Viscosity and conductivity by Chung et al. (`VS5`, `TC5`)",
            "T. H. Chung, M. Ajlan, L. L. Lee, K. E. Starling, Ind. Eng. Chem. Res. 27, 671 (1988), tables II and IV",
            "the independent evaluation of IPENTANE; the conductivity of PENTANE within 15 %"),
        row("Viscosity of water (`VS0`, sub-tag `H2O`)", "IAPWS R12-08: critical enhancement; the other coefficients stand "
            "in a fluid file", "the check values of the release outside the critical region"),
        row("Conductivity of water (`TC0`, sub-tag `H2O`; `TCCR_2010`)",
            "IAPWS R15-11: critical enhancement; the other coefficients stand in a fluid file",
            "the check values of the release outside the critical region"),
        row("Conductivity of heavy water (`TC0`, sub-tag `D2O`)", "none: all coefficients stand in a fluid file",
            "the check values of IAPWS R4-84(2007)"),
        row("Ethylene (`VS0` and `TC0`, sub-tag `ETY`)",
            "P. M. Holland, B. E. Eaton, H. J. M. Hanley, J. Phys. Chem. Ref. Data 12, 917 (1983)",
            "printed viscosities; the conductivity against the newer correlation within 10 %"),
        row("Conductivity of helium (`TC0`, sub-tags `HE`, `HE3`)",
            "B. A. Hands, V. D. Arp, Cryogenics 21, 697 (1981): scaled compressibility; its algebra is completed from the "
            "general scaled equation of state", "the dilute gas at 300 K; the critical region is not checked"),
        row("Conductivity of hydrogen (`TC0`, sub-tags `H2`, `D2`, `T2`)",
            "conductivity of normal hydrogen and parahydrogen at nine temperatures from 70 to 410 K, linear between them "
            "(the published table has steps of 10 K)", "the blend of the two ranges; no check against printed values"),
        row("Collision integrals (`CI0`)", "P. D. Neufeld, A. R. Janzen, R. A. Aziz, J. Chem. Phys. 57, 1100 (1972), "
            "without the oscillating terms", "the tables of Hirschfelder, Curtiss and Bird within 1.5 %"),
        "", "Sub-tags of `VS0` whose published constants the program does not hold: `NEO` (neon), `HE` and `HE3` "
        "(helium), `H2`, `H2A`, `D2` and `T2` (hydrogens), `MEO` (methanol), `SF6` (sulfur hexafluoride). A file that "
        "names one of them is read, and its viscosity answers with code 49. No fluid file of this installation does.",
    ]
    refs = program + ["", "## References", ""] + ["%d. %s" % (k + 1, t) for k, t in enumerate(s.texts)]
    with open(os.path.join(HERE, "..", "docs", "data-sources.md"), "w", encoding="utf-8", newline="\n") as f:
        f.write("\n".join(head + body + refs) + "\n")
    return 0


if __name__ == "__main__":
    sys.exit(main())
