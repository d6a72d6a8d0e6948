' Nothing: what starting the program takes.
