"""Coefficients of the modified Benedict-Webb-Rubin equation from its equivalent Helmholtz form.

The equation of 32 coefficients c gives the pressure in bar over rho in mol/L,

    p = rho R T + sum of c T^e rho^n             (n = 2 to 9)
                + exp(-y) sum of c T^e rho^n     (n = 3, 5, ..., 13),   y = (rho/gamma)^2.

Its Helmholtz energy has 40 terms N tau^t del^d exp(-del^l) with the reducing values (Tr, gamma):
the integral of the first sum gives 19 terms with l = 0 and d = n - 1, that of the second 18 terms
with l = 2 and d = 0, 2, ..., 10, and three terms without del take the value at zero density off.
With t = 1 - e and u = 2 m + 3 the power of the second sum,

    c = N d R Tr^t / gamma^d                               (l = 0),
    c = (2 j N(j) - 2 N(j - 1)) R Tr^t / gamma^(2 j)       (l = 2, j = m + 1, N(j) the term with d = 2 j).

Six of the 18 differences have no coefficient in the equation and must vanish, which proves that
the form is one.
"""

# groups of coefficients in file order: (power of rho, exponents of T)
POWERS = [(2, (1, 0.5, 0, -1, -2)), (3, (1, 0, -1, -2)), (4, (1, 0, -1)), (5, (0,)), (6, (-1, -2)), (7, (-1,)),
          (8, (-1, -2)), (9, (-2,))]
EXPONENTIALS = [(3, (-2, -3)), (5, (-2, -4)), (7, (-2, -3)), (9, (-2, -4)), (11, (-2, -3)), (13, (-2, -3, -4))]


def is_benedict_form(eos):
    """Whether a Helmholtz equation is one of this kind: 40 terms, no other exponential than exp(-del^2)."""
    terms = eos["terms"]
    return eos["tag"] == "FEQ" and len(terms) == 40 and not eos["critical_rows"] and \
        all(row[3] in (0, 2) for row in terms) and sum(row[2] == 0 and row[3] == 0 for row in terms) == 3


def benedict_coefficients(eos):
    """The 32 coefficients, in file order."""
    tr, gamma = eos["reducing"]
    r = eos["gas_constant"] / 100  # L bar/(mol K)
    left = {(t, d, l): n for n, t, d, l in eos["terms"]}
    exponential = {(t, d): left.pop((t, d, 2)) for t in (3, 4, 5) for d in range(0, 11, 2)}
    for t in (3, 4, 5):
        assert left.pop((t, 0, 0)) == -exponential[t, 0]

    out = []
    for n, exponents in POWERS:
        d = n - 1
        out += [left.pop((1 - e, d, 0)) * d * r * tr ** (1 - e) / gamma ** d for e in exponents]
    assert not left

    for n, exponents in EXPONENTIALS:
        j = (n - 1) // 2
        for t in (3, 4, 5):
            here, before = exponential.get((t, 2 * j), 0.0), exponential[t, 2 * j - 2]
            difference = 2 * j * here - 2 * before
            if 1 - t in exponents:
                out.append(difference * r * tr ** t / gamma ** (2 * j))
            else:
                assert abs(difference) <= 4e-15 * abs(2 * before), (t, j, difference)
    assert len(out) == 32
    return out
