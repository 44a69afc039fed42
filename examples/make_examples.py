#!/usr/bin/env python3
"""Writes the example files. Only + - * / and the square root are used, because their results are
the same on every machine.

run1.req     a quarter-car model drives over a bump: car body, suspension, wheel and tyre
sled.mad     a sled test: the crash pulse of the sled, and the response of a belted chest and head
sensors.pos  a table in the style of a data logger: a press closes, pauses and opens, with noise
bumper.vdr   force against deflection of a bumper that is compressed and released
"""
import math
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
    return tuple(x + h / 6.0 * (a + 2.0 * b + 2.0 * c + d)
                 for x, a, b, c, d in zip(state, k1, k2, k3, k4))


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


def pulse(t):
    """Deceleration of the sled in m/s2: a smooth pulse of 0.1 s."""
    s = t / 0.1
    return -330.0 * (4.0 * s * (1.0 - s)) * (1.0 - 0.4 * s) if 0.0 < s < 1.0 else 0.0


def belted(stiffness, damping, h=0.0001):
    """Accelerations every 0.001 s of a part that a spring and a damper connect to the sled.
    Stiffness and damping are per unit of mass."""
    travel = speed = 0.0
    for k in range(1501):
        pull = -stiffness * travel - damping * speed
        if k % 10 == 0:
            yield pull
        speed += h * (pull - pulse(k * h))
        travel += h * speed


def madymo_file():
    names = ["SLED", "CHEST", "HEAD"]
    columns = ["resultant acceleration", "x acceleration", "y acceleration", "z acceleration"]
    out = ["Sled test, 48 km/h\n", "accelerations in m/s2 over time in s\n",
           f"{len(names):5d}{len(columns):5d}\n"]
    out += [f"{name:<10}{position:4d}\n" for position, name in enumerate(names, 1)]
    out += [name + "\n" for name in columns]
    for k, (chest, head) in enumerate(zip(belted(3600.0, 36.0), belted(1600.0, 16.0))):
        t = k * 0.001
        out.append(f"{t:12.5f}\n")
        for x, lift in ((pulse(t), 0.0), (chest, 0.12), (head, -0.35)):
            z = lift * x
            out.append("".join(f"{v:14.5E}" for v in (math.sqrt(x * x + z * z), x, 0.0, z)) + "\n")
    return "".join(out)


def column_file():
    out = ["time_s, force_kN, travel_mm, temperature_C\n"]
    noise = 20171220
    for k in range(200):
        t = k * 0.05
        closed = min(t / 3.0, 1.0) if t < 7.0 else max(1.0 - (t - 7.0) / 2.0, 0.0)
        jitter = []
        for _ in range(3):
            noise = (noise * 1103515245 + 12345) % 2147483648
            jitter.append(noise / 1073741824.0 - 1.0)
        force = 80.0 * closed * closed * closed + 0.4 * jitter[0]
        travel = 12.0 * closed + 0.02 * jitter[1]
        temperature = 21.5 + 0.01 * k + 0.05 * jitter[2]
        out.append(f"{t:.2f}, {force:.3f}, {travel:.4f}, {temperature:.2f}\n")
    return "".join(out)


def frame_file():
    pushed = [(d, 0.9 * d + 0.012 * d * d) for d in (2.0 * k for k in range(31))]
    top, force = pushed[-1]
    released = [(d, force * ((d - 18.0) / (top - 18.0)) ** 2)
                for d in (top - 2.0 * k for k in range(1, 22))]
    points = pushed + released
    out = ["%T\n", "Bumper, pushed in and let go\n"]
    out += ["%XA\n", "Deflection (mm)\n", "%YA\n", "Force (kN)\n"]
    out += ["%XR\n", "0\n", "60\n", "%YR\n", "0\n", "100\n"]
    out += ["%S\n", "1\n", "%N\n", f"{len(points)}\n", "%XY\n", "%D\n"]
    out += [f"{d:8.2f} {f:10.4f}\n" for d, f in points]
    return "".join(out)


FILES = {
    "run1.req": request_file,
    "sled.mad": madymo_file,
    "sensors.pos": column_file,
    "bumper.vdr": frame_file,
}


def main():
    here = pathlib.Path(__file__).parent
    directory = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else here
    for name, make in FILES.items():
        (directory / name).write_bytes(make().encode("ascii"))


if __name__ == "__main__":
    main()
