#!/usr/bin/env python3
"""Writes street.kyrscene, the scene that the editor opens by default.

A street of gabled houses with a café, a square with a fountain, trees, lamps and cars. Everything
is made of primitive shapes. Run it in this folder after changing it.
"""

import math
import xml.etree.ElementTree as xml


def linear(code):
    """'#rrggbb' as the linear colour text of a property."""
    channels = [int(code[i : i + 2], 16) / 255 for i in (1, 3, 5)]
    values = [c / 12.92 if c <= 0.04045 else ((c + 0.055) / 1.055) ** 2.4 for c in channels]
    return " ".join(f"{v:.4g}" for v in values) + " 1"


def numbers(*values):
    return " ".join(f"{v:.6g}" for v in values)


class Node:
    """An object of the scene; methods add children and return them."""

    def __init__(self, element):
        self.element = element

    def add(self, kind, name, at=(0, 0, 0), turn=(0, 0, 0), scale=(1, 1, 1)):
        element = xml.SubElement(self.element, "object", kind=kind, name=name)
        place = {}
        if any(at):
            place["position"] = numbers(*at)
        if any(turn):
            place["rotation"] = numbers(*turn)
        if tuple(scale) != (1, 1, 1):
            place["scale"] = numbers(*scale)
        if place:
            xml.SubElement(element, "transform", place)
        return Node(element)

    def group(self, name, at=(0, 0, 0), turn=(0, 0, 0), expanded=False):
        node = self.add("group", name, at, turn)
        if expanded:
            node.element.set("expanded", "true")
        return node

    def mesh(self, name, shape, color, at=(0, 0, 0), turn=(0, 0, 0), scale=(1, 1, 1), rough=0.8,
             metal=0, glow=None):
        node = self.add("mesh", name, at, turn, scale)
        look = {"baseColor": linear(color)}
        if metal:
            look["metallic"] = numbers(metal)
        if rough != 0.6:
            look["roughness"] = numbers(rough)
        if glow:
            look["emissive"] = linear(glow)
        xml.SubElement(node.element, "material", look)
        xml.SubElement(node.element, "mesh", source=shape)
        return node

    def light(self, name, kind, color, intensity, at, turn=(0, 0, 0), reach=12, angles=None):
        node = self.add("light", name, at, turn)
        values = {"type": kind, "color": linear(color), "intensity": numbers(intensity),
                  "range": numbers(reach)}
        if angles:
            values["innerAngle"], values["outerAngle"] = (numbers(a) for a in angles)
        xml.SubElement(node.element, "light", values)
        return node

    def camera(self, name, at, look_at, view, target=None):
        dx, dy, dz = (b - a for a, b in zip(at, look_at))
        turn = (math.degrees(math.atan2(dy, math.hypot(dx, dz))),
                math.degrees(math.atan2(-dx, -dz)), 0)
        node = self.add("camera", name, at, turn)
        values = {"fieldOfView": numbers(view)}
        if target:
            values["target"] = target
        xml.SubElement(node.element, "camera", values)
        return node


GLASS = "#8fc7de"
WOOD = "#8a5a36"
STONE = "#c9c2b4"
IRON = "#39414a"
WHITE = "#f4efe4"
WARM = "#ffd9a0"


def ground(root):
    ground = root.group("Ground")
    ground.element.set("locked", "true")
    ground.mesh("Lawn", "box 52 0.4 33", "#7fa85b", (0, -0.25, 3.2), rough=1)
    ground.mesh("Road", "box 52 0.1 7", "#4b4f57", (0, -0.04, 0), rough=0.95)
    ground.mesh("North pavement", "box 52 0.25 3.4", "#b7b1a6", (0, 0.02, -5.2), rough=0.95)
    ground.mesh("South pavement", "box 52 0.25 2.4", "#b7b1a6", (0, 0.02, 4.7), rough=0.95)
    ground.mesh("Square", "box 20 0.2 13", "#d3c3a4", (4, 0.02, 12.3), rough=0.95)
    marks = ground.group("Lane marks")
    for i in range(11):
        x = -23 + i * 4.4
        if abs(x - 3.4) > 2.2:
            marks.mesh(f"Dash {i + 1}", "box 2 0.02 0.16", WHITE, (x, 0.02, 0))
    crossing = ground.group("Crossing", (3.4, 0.02, 0))
    for i in range(7):
        crossing.mesh(f"Stripe {i + 1}", "box 2.6 0.02 0.5", WHITE, (0, 0, -3 + i))


def window(house, name, x, y, z, wide=1.1, high=1.3):
    frame = house.group(name, (x, y, z))
    frame.mesh("Frame", f"box {wide + 0.24} {high + 0.24} 0.12", WHITE)
    frame.mesh("Pane", f"box {wide} {high} 0.14", GLASS, (0, 0, 0.02), rough=0.15, metal=0.1)
    frame.mesh("Sill", f"box {wide + 0.4} 0.1 0.36", STONE, (0, -high / 2 - 0.12, 0.1))


def house(street, name, x, width, floors, wall, roof, door):
    height = 3.1 * floors
    front = 3.0
    home = street.group(name, (x, 0.12, -10))
    home.mesh("Walls", f"box {width} {height} 6", wall, (0, height / 2, 0))
    home.mesh("Plinth", f"box {width + 0.12} 0.5 6.12", STONE, (0, 0.25, 0))
    home.mesh("Cornice", f"box {width + 0.3} 0.22 6.3", WHITE, (0, height, 0))
    if floors == 2:
        home.mesh("Roof", f"prism 7 2.6 {width + 0.5}", roof, (0, height + 0.1, 0), (0, 90, 0))
    else:
        home.mesh("Roof", f"prism {width + 0.5} 3 6.8", roof, (0, height + 0.1, 0))
    home.mesh("Chimney", "box 0.7 2 0.7", "#9a5a48", (width / 4, height + 1.9, -1.2))
    entrance = home.group("Entrance", (-width / 4, 0, front))
    entrance.mesh("Door", "box 1.2 2.3 0.16", door, (0, 1.15, 0.02))
    entrance.mesh("Knob", "sphere 0.07", "#e0b84c", (0.42, 1.1, 0.15), rough=0.3, metal=1)
    entrance.mesh("Step", "box 1.8 0.2 0.8", STONE, (0, 0.1, 0.45))
    entrance.mesh("Canopy", "box 1.9 0.12 0.9", roof, (0, 2.55, 0.45))
    windows = home.group("Windows")
    for floor in range(floors):
        y = 1.75 + floor * 3.1
        for side, label in ((-1, "left"), (1, "right")):
            if floor > 0 or side > 0:
                window(windows, f"Window {floor + 1} {label}", side * width / 4, y, front)
    return home


def cafe(street, x):
    home = house(street, "Café", x, 7.4, 2, "#e9c46a", "#8d4a3a", "#2a6f77")
    awning = home.group("Awning", (1.6, 2.9, 3.5), (18, 0, 0))
    for i in range(6):
        awning.mesh(f"Stripe {i + 1}", "box 0.62 0.08 1.5",
                    "#d1495b" if i % 2 == 0 else WHITE, (-1.55 + i * 0.62, 0, 0))
    sign = home.group("Sign", (1.6, 3.75, 3.12))
    sign.mesh("Board", "box 2.8 0.7 0.12", "#2a6f77")
    sign.mesh("Cup", "cylinder 0.2 0.3", WHITE, (-0.8, -0.15, 0.16))
    sign.mesh("Line", "box 1.4 0.12 0.06", WARM, (0.35, 0, 0.08), glow="#5a3a10")
    home.light("Shop light", "spot", WARM, 35, (1.6, 2.6, 3.9), (-80, 0, 0), 8, (30, 48))


def clock_tower(street, x):
    tower = street.group("Clock tower", (x, 0.12, -10))
    tower.mesh("Shaft", "box 4.4 12 4.4", "#d9cbb0", (0, 6, 0))
    tower.mesh("Base", "box 5 1.2 5", STONE, (0, 0.6, 0))
    tower.mesh("Gallery", "box 5.2 0.4 5.2", STONE, (0, 12.1, 0))
    tower.mesh("Belfry", "box 3.6 2.4 3.6", "#d9cbb0", (0, 13.4, 0))
    tower.mesh("Spire", "cone 3 4.6", "#4d7c72", (0, 14.6, 0), rough=0.5, metal=0.2)
    tower.mesh("Ball", "sphere 0.35", "#e0b84c", (0, 19.3, 0), rough=0.25, metal=1)
    tower.mesh("Gate", "box 1.8 2.8 0.2", WOOD, (0, 1.4, 2.45))
    clock = tower.group("Clock", (0, 10, 2.22))
    clock.mesh("Dial", "cylinder 1.25 0.12", WHITE, turn=(90, 0, 0))
    clock.mesh("Rim", "torus 1.25 0.1", "#e0b84c", (0, 0, 0.1), (90, 0, 0), rough=0.3, metal=1)
    clock.mesh("Hour hand", "box 0.12 0.7 0.06", IRON, (0.22, 0.2, 0.16), (0, 0, -48))
    clock.mesh("Minute hand", "box 0.08 1.05 0.06", IRON, (0, 0.45, 0.17))


def tree(trees, number, x, z, size, leaves):
    plant = trees.group(f"Tree {number}", (x, 0.1, z), (0, number * 47 % 360, 0))
    plant.mesh("Trunk", f"cone {0.26 * size:.3g} {2.4 * size:.3g} {0.16 * size:.3g}", WOOD)
    for i, (dx, dy, dz, radius) in enumerate(
            ((0, 3.1, 0, 1.25), (0.75, 2.5, 0.3, 0.9), (-0.65, 2.6, -0.35, 0.95))):
        plant.mesh(f"Leaves {i + 1}", f"sphere {radius * size:.3g}", leaves[i % len(leaves)],
                   (dx * size, dy * size, dz * size), rough=1)


def lamp(lamps, number, x, z, side):
    post = lamps.group(f"Lamp {number}", (x, 0.14, z), (0, 0 if side > 0 else 180, 0))
    post.mesh("Foot", "cone 0.28 0.4 0.14", IRON, metal=0.6, rough=0.5)
    post.mesh("Post", "cylinder 0.08 4.4", IRON, metal=0.6, rough=0.5)
    post.mesh("Arm", "box 0.08 0.08 1", IRON, (0, 4.36, 0.46), metal=0.6, rough=0.5)
    post.mesh("Shade", "cone 0.34 0.3 0.1", IRON, (0, 4.12, 0.9), metal=0.6, rough=0.5)
    post.mesh("Bulb", "sphere 0.19", WARM, (0, 4.08, 0.9), glow="#ffc070")
    post.light("Light", "spot", WARM, 60, (0, 4, 0.9), (-90, 0, 0), 9, (35, 55))


def car(cars, name, x, z, heading, paint):
    body = cars.group(name, (x, 0, z), (0, heading, 0))
    body.mesh("Body", "box 4 0.62 1.72", paint, (0, 0.66, 0), rough=0.3, metal=0.3)
    body.mesh("Cabin", "box 2.1 0.62 1.5", paint, (-0.2, 1.24, 0), rough=0.3, metal=0.3)
    body.mesh("Glass", "box 2.14 0.4 1.3", "#2d4150", (-0.2, 1.25, 0), rough=0.15, metal=0.4)
    body.mesh("Side glass", "box 1.7 0.4 1.54", "#2d4150", (-0.2, 1.25, 0), rough=0.15, metal=0.4)
    body.mesh("Bumper", "box 4.16 0.2 1.6", IRON, (0, 0.46, 0))
    body.mesh("Head lamps", "box 0.1 0.16 1.4", "#fff4cf", (1.98, 0.72, 0), glow="#b09a60")
    body.mesh("Tail lamps", "box 0.1 0.16 1.4", "#c8323c", (-1.98, 0.72, 0), glow="#601018")
    wheels = body.group("Wheels")
    for label, wx, wz in (("front left", 1.25, -0.8), ("front right", 1.25, 0.8),
                          ("rear left", -1.25, -0.8), ("rear right", -1.25, 0.8)):
        wheel = wheels.group(f"Wheel {label}", (wx, 0.38, wz), (90, 0, 0))
        wheel.mesh("Tyre", "torus 0.27 0.12", "#23262b", rough=0.95)
        wheel.mesh("Rim", "cylinder 0.2 0.12", "#c3c8cf", (0, -0.06, 0), rough=0.3, metal=0.9)


def fountain(square):
    pool = square.group("Fountain", (4, 0.12, 12))
    pool.mesh("Basin", "cylinder 2.6 0.55", STONE)
    pool.mesh("Rim", "torus 2.55 0.16", "#ded8ca", (0, 0.56, 0))
    pool.mesh("Water", "cylinder 2.4 0.06", "#4fa3c7", (0, 0.54, 0), rough=0.1)
    pool.mesh("Column", "cone 0.4 1.7 0.26", STONE, (0, 0.5, 0))
    pool.mesh("Bowl", "cone 0.3 0.45 1.15", "#ded8ca", (0, 1.9, 0))
    pool.mesh("Upper water", "cylinder 1.02 0.05", "#4fa3c7", (0, 2.33, 0), rough=0.1)
    pool.mesh("Finial", "cone 0.14 0.8 0.05", STONE, (0, 2.3, 0))
    pool.mesh("Top", "sphere 0.22", "#e0b84c", (0, 3.2, 0), rough=0.25, metal=1)
    pool.light("Pool light", "point", "#8fd8ff", 12, (0, 1, 0), reach=6)


def bench(square, number, x, z, heading):
    seat = square.group(f"Bench {number}", (x, 0.12, z), (0, heading, 0))
    for i in range(3):
        seat.mesh(f"Slat {i + 1}", "box 1.9 0.07 0.17", WOOD, (0, 0.46, -0.2 + i * 0.2))
    seat.mesh("Back", "box 1.9 0.4 0.07", WOOD, (0, 0.8, -0.32), (-10, 0, 0))
    for side, label in ((-0.8, "left"), (0.8, "right")):
        seat.mesh(f"Leg {label}", "box 0.1 0.46 0.5", IRON, (side, 0.23, -0.02), metal=0.6)


def table(terrace, number, x, z, color):
    place = terrace.group(f"Table {number}", (x, 0.14, z))
    place.mesh("Top", "cylinder 0.62 0.06", WHITE, (0, 0.74, 0))
    place.mesh("Stem", "cylinder 0.05 0.75", IRON, metal=0.6)
    umbrella = place.group("Parasol")
    umbrella.mesh("Pole", "cylinder 0.04 2.5", WHITE)
    umbrella.mesh("Canopy", "cone 1.5 0.65", color, (0, 2.1, 0))
    for i, angle in enumerate((25, 145, 265)):
        x_at = 1.0 * math.cos(math.radians(angle))
        z_at = 1.0 * math.sin(math.radians(angle))
        stool = place.group(f"Stool {i + 1}", (x_at, 0, z_at))
        stool.mesh("Seat", "cylinder 0.24 0.07", color, (0, 0.46, 0))
        stool.mesh("Leg", "cylinder 0.05 0.46", IRON, metal=0.6)


def main():
    document = xml.Element("kyrscene", version="1")
    root = Node(xml.SubElement(document, "scene", name="Street", expanded="true"))

    ground(root)

    houses = root.group("Houses", expanded=True)
    clock_tower(houses, -22)
    house(houses, "Baker's house", -15.6, 6, 2, "#e07a5f", "#6d3b34", "#3d5a40")
    house(houses, "Tall house", -9.2, 5.4, 3, "#81b29a", "#3f4a5a", "#b5483a")
    cafe(houses, -2.2)
    house(houses, "Corner house", 5, 5.8, 3, "#f2cc8f", "#7a3e34", "#35506b")
    house(houses, "Painter's house", 11.8, 6.2, 2, "#7d9fc4", "#4a3a4f", "#e9b44c")
    house(houses, "End house", 18.8, 6, 3, "#d98a94", "#46525e", "#f4efe4")

    square = root.group("Square")
    fountain(square)
    bench(square, 1, -1.4, 9.6, 45)
    bench(square, 2, 9.4, 9.6, -45)
    bench(square, 3, -1.4, 15, 135)
    bench(square, 4, 9.4, 15, -135)

    terrace = root.group("Terrace")
    for number, (x, color) in enumerate(((-4.4, "#d1495b"), (0.2, "#edae49")), 1):
        table(terrace, number, x, -4.9, color)

    trees = root.group("Trees")
    green = ("#5d9147", "#76a94f", "#4d7f43")
    autumn = ("#d98e3a", "#c9712f", "#e0a84a")
    places = ((-20, 9, 1.25, green), (-14.5, 13.5, 1.5, green), (-10, 8.6, 1.05, autumn),
              (-18, 17, 1.3, autumn), (16.6, 9, 1.2, green), (20.4, 13.2, 1.45, green),
              (17.2, 17.2, 1.1, autumn), (-8.8, 17.3, 1.2, green), (23, 8.2, 1.0, autumn))
    for number, (x, z, size, leaves) in enumerate(places, 1):
        tree(trees, number, x, z, size, leaves)

    lamps = root.group("Lamps")
    for number, (x, z) in enumerate(((-18.6, -3.9), (-5.9, -3.9), (8.4, -3.9), (22, -3.9),
                                     (-12, 4.2), (0, 4.2), (13, 4.2)), 1):
        lamp(lamps, number, x, z, 1 if z < 0 else -1)

    cars = root.group("Cars")
    car(cars, "Red car", -9, 1.75, 0, "#c63d3d")
    car(cars, "Yellow van", 12.5, 1.75, 0, "#e8b23a")
    car(cars, "Blue car", -16.5, -1.75, 180, "#3f78b5")

    lights = root.group("Sky lights")
    lights.light("Sun", "directional", "#fff1d6", 3.2, (24, 13, 10), (-48, 38, 0), reach=0)
    lights.light("Sky fill", "directional", "#b8d4ff", 0.8, (-24, 11, 8), (-40, -60, 0), reach=0)

    cameras = root.group("Cameras")
    cameras.camera("Street view", (-24, 3.2, 3.2), (4, 2.2, -2), 50, "Square/Fountain")
    cameras.camera("Overview", (17, 13, 19), (0, 2, 0), 60, "Houses")
    cameras.camera("Café close-up", (3.5, 2.4, 1.5), (-2.4, 1.8, -6), 38, "Houses/Café/Sign")

    for number, element in enumerate(document.iter("object"), 1):
        element.set("id", str(number + 1))
    tree_of_elements = xml.ElementTree(document)
    xml.indent(tree_of_elements, "  ")
    tree_of_elements.write("street.kyrscene", encoding="utf-8", xml_declaration=True)


if __name__ == "__main__":
    main()
