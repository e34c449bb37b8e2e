"""Runs acceptance cases, which are data, against a build of the program."""
