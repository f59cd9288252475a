# Writes each fenced block that names a file ("```cpp file=main.cpp") to that file in `folder`.
/^```[a-z]+ file=/ { sub(/^.*file=/, ""); file = folder "/" $0; next }
/^```/ { if (file != "") close(file); file = ""; next }
file != "" { print > file }
