#include "LineProperty.h"

#include "PROP_SUB.h"

namespace frigana {

double propertyByLetter(char letter, double T, double D, const Composition& z) {
    double value = 0;
    switch (letter) {
        case 'H':
            ENTHAL(T, D, z, value);
            break;
        case 'S':
            ENTRO(T, D, z, value);
            break;
        case 'E':
            ENERGY(T, D, z, value);
            break;
        case 'D':
            return D;
        case 'T':
            return T;
        default:
            PRESS(T, D, z, value);
            break;
    }
    return value;
}

}  // namespace frigana
