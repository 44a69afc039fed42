"""Slurm on this machine as a cluster of one node: its own directories, the loopback, free ports."""
import getpass
import os
import pwd
import socket
import subprocess
import time

PROGRAMS = ("munged", "slurmctld", "slurmd", "sbatch", "sinfo", "scancel", "squeue")
PATH = "/usr/sbin:/usr/bin:/sbin:/bin"
PATIENCE = 60.0  # seconds until a node is ready, or has ended

CONFIGURATION = """\
ClusterName=test
SlurmctldHost=localhost(127.0.0.1)
SlurmUser={user}
SlurmdUser={user}
AuthType=auth/munge
AuthInfo=socket={base}/munge.socket
StateSaveLocation={base}/state
SlurmdSpoolDir={base}/spool
SlurmctldPidFile={base}/slurmctld.pid
SlurmdPidFile={base}/slurmd.pid
SlurmctldLogFile={base}/slurmctld.log
SlurmdLogFile={base}/slurmd.log
SlurmctldPort={ports[0]}
SlurmdPort={ports[1]}
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_Core
ReturnToService=2
MpiDefault=none
CommunicationParameters=NoCtldInAddrAny,NoInAddrAny
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
NodeName=localhost NodeAddr=127.0.0.1 CPUs={cpus} RealMemory=100 State=UNKNOWN
PartitionName=all Nodes=localhost Default=YES MaxTime=INFINITE State=UP
"""


def free_ports(count):
    """Ports of the loopback that nobody uses now."""
    sockets = [socket.socket() for _ in range(count)]
    for each in sockets:
        each.bind(("127.0.0.1", 0))
    ports = [each.getsockname()[1] for each in sockets]
    for each in sockets:
        each.close()
    return ports


class Cluster:
    """Runs until the end of the test. Programs in the sandbox find it by SLURM_CONF."""

    def __init__(self, box):
        box.require(*PROGRAMS, path=PATH)
        self.box, self.base, self.daemons = box, box.base / "cluster", []
        for name in ("", "state", "spool"):
            (self.base / name).mkdir(mode=0o755)
        self.key = self.base / "munge.key"
        self.key.write_bytes(os.urandom(1024))
        self.key.chmod(0o600)
        conf = self.base / "slurm.conf"
        user = pwd.getpwuid(os.getuid()).pw_name
        conf.write_text(CONFIGURATION.format(user=user, base=self.base, ports=free_ports(2),
                                             cpus=min(os.cpu_count(), 2)))
        box.environment["SLURM_CONF"] = str(conf)
        box.addCleanup(self.end)
        self.start("munged", "-F", "-f", f"--key-file={self.key}",
                   f"--socket={self.base}/munge.socket", f"--pid-file={self.base}/munged.pid",
                   f"--log-file={self.base}/munged.log", f"--seed-file={self.base}/munged.seed")
        self.wait_for("munge", lambda: (self.base / "munge.socket").is_socket())
        self.start("slurmctld", "-D", "-f", conf)
        self.start("slurmd", "-D", "-N", "localhost", "-f", conf)
        self.wait_for("an idle node", lambda: self.ask("sinfo", "-h", "-o", "%T") == "idle")

    def start(self, name, *arguments):
        program, = self.box.require(name, path=PATH)
        with (self.base / f"{name}.out").open("wb") as out:
            self.daemons.append(self.box.start(program, *arguments, stdout=out, stderr=out,
                                               PATH=PATH, cwd=self.base))

    def ask(self, *command):
        return self.box.run_program(*command).stdout.strip()

    def wait_for(self, what, done):
        end = time.monotonic() + PATIENCE
        while not done():
            ended = [daemon.args[0] for daemon in self.daemons if daemon.poll() is not None]
            if ended or time.monotonic() > end:
                self.box.fail(f"no {what}; ended: {ended}\n{self.logs()}")
            time.sleep(0.1)

    def logs(self):
        return "".join(f"{path.name}:\n{path.read_text(errors='replace')[-2000:]}\n"
                       for path in sorted([*self.base.glob("*.log"), *self.base.glob("*.out")]))

    def end(self):
        """Ends the jobs that are left, then the daemons, the last one first."""
        if len(self.daemons) == 3:
            self.box.run_program("scancel", "-u", getpass.getuser())
            self.wait_for("empty queue", lambda: not self.ask("squeue", "-h"))
        for daemon in reversed(self.daemons):
            daemon.terminate()
            try:
                daemon.wait(PATIENCE)
            except subprocess.TimeoutExpired:
                daemon.kill()
                daemon.wait()
