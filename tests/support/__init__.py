"""Shared by the test scripts: the sandbox with its checks, and the pseudo-terminal."""
