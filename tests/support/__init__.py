"""What the test scripts share: the sandbox with its checks, and the pseudo-terminal."""
