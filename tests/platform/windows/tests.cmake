# What holds on Windows only.
