uniform vec2 branch; // places among the items, from the first to before the last

// Items out of the branch shrink to a point that is cut off.
vec4 withinBranch(vec4 position)
{
    bool inside = branch.x <= instanceColor.a && instanceColor.a < branch.y;
    return inside ? position : vec4(2.0, 2.0, 2.0, 1.0);
}
