"""What the reports say of a goal."""


def verdict(met):
    return "met" if met else "NOT MET"
