#!/usr/bin/env python3
"""Makes the example files. Only + - * / are used, so that every machine makes the same bytes.

run1.req   a quarter-car model drives over a bump: a car body on a suspension on a wheel on a tyre
"""
import pathlib
import sys

# Quarter-car: N, m, kg, s
BODY, WHEEL = 300.0, 40.0
SPRING, DAMPER, TYRE = 20000.0, 1500.0, 180000.0
SPEED = 5.0
BUMP_AT, BUMP_LENGTH, BUMP_HEIGHT = 2.5, 1.5, 0.08
STEP, STEPS, SUBSTEPS = 0.01, 300, 20


def road(t):
    """Height of the road under the wheel: a smooth bump."""
    s = (SPEED * t - BUMP_AT) / BUMP_LENGTH
    if s <= 0.0 or s >= 1.0:
        return 0.0
    hump = 4.0 * s * (1.0 - s)
    return BUMP_HEIGHT * hump * hump


def forces(t, state):
    """Suspension and tyre force on the body and on the wheel, static load left out."""
    body, body_v, wheel, wheel_v = state
    return SPRING * (wheel - body) + DAMPER * (wheel_v - body_v), TYRE * (road(t) - wheel)


def slope(t, state):
    suspension, tyre = forces(t, state)
    return state[1], suspension / BODY, state[3], (tyre - suspension) / WHEEL


def advance(t, state, h):
    """One step of the classical Runge-Kutta method."""
    def shifted(k, f):
        return tuple(x + f * dx for x, dx in zip(state, k))
    k1 = slope(t, state)
    k2 = slope(t + h / 2.0, shifted(k1, h / 2.0))
    k3 = slope(t + h / 2.0, shifted(k2, h / 2.0))
    k4 = slope(t + h, shifted(k3, h))
    return tuple(x + h / 6.0 * (a + 2.0 * b + 2.0 * c + d) for x, a, b, c, d in zip(state, k1, k2, k3, k4))


def record(*numbers):
    return "".join(f" {x: .10E}" for x in numbers) + "\n"


# identifier, type (1 displacement, 2 velocity, 3 acceleration, 4 force, 5 user), name
REQUESTS = [
    (38, 1, "BODY_DISPLACEMENT"),
    (39, 2, "BODY_VELOCITY"),
    (40, 3, "BODY_ACCELERATION"),
    (52, 1, "WHEEL_DISPLACEMENT"),
    (61, 4, "SUSPENSION_FORCE"),
    (62, 4, "TYRE_FORCE"),
    (70, 5, ""),
]


def request_values(t, state):
    """The six numbers of each request, in mm, N and s."""
    body, body_v, wheel, wheel_v = (1000.0 * x for x in state)
    suspension, tyre = forces(t, state)
    travel = 1000.0 * SPEED * t
    body_a = 1000.0 * suspension / BODY
    return [
        (travel, 0.0, body, 0.0, 0.0, 0.0),
        (1000.0 * SPEED, 0.0, body_v, 0.0, 0.0, 0.0),
        (0.0, 0.0, body_a, 0.0, 0.0, 0.0),
        (travel, 0.0, wheel, 0.0, 0.0, 0.0),
        (0.0, 0.0, suspension, 0.0, 0.0, 0.0),
        (0.0, 0.0, tyre, 0.0, 0.0, 0.0),
        (travel, 1000.0 * road(t), wheel - body, 0.0, 0.0, 0.0),
    ]


def request_file():
    out = [" A.R3    2017-12-20 16:18:45               0         0  3D\n"]
    out.append("Quarter car over a bump at 5 m/s".ljust(80) + "\n")
    out.append(f"{len(REQUESTS):5d}     MMKGS_N_RACA 1.000000000000000E+03\n")
    for identifier, kind, name in REQUESTS:
        out.append(f"{identifier:10d}{kind:10d}{0:10d}{0:10d}{len(name):10d}\n")
        if name:
            out.append(name + "\n")
    state = (0.0, 0.0, 0.0, 0.0)
    for step in range(STEPS + 1):
        t = step * STEP
        out.append(record(t))
        out.extend(record(*values) for values in request_values(t, state))
        for sub in range(SUBSTEPS):
            state = advance(t + sub * STEP / SUBSTEPS, state, STEP / SUBSTEPS)
    return "".join(out)


FILES = {"run1.req": request_file}


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).parent
    for name, make in FILES.items():
        (folder / name).write_bytes(make().encode("ascii"))


if __name__ == "__main__":
    main()
