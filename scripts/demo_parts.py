"""What the steps of the demo share: the local service, the terminal host, and words for people."""

import json
import os
import signal
import subprocess
import time
import urllib.request


class Failed(Exception):
    """A step that did not do what it should; the text says why."""


# Without the caller's own session, and past a proxy: the service is on this machine.
ENVIRONMENT = {
    **{name: value for name, value in os.environ.items() if not name.startswith("QUILLBOX_")},
    "no_proxy": "127.0.0.1",
}


class Service:
    """quillboxd on a free port, for as long as the block runs."""

    def __init__(self, program, folder, *options):
        self.command = [program, "--data", folder / "data", "--port-file", folder / "port", *options]
        self.port_file = folder / "port"
        self.port = "0"

    def __enter__(self):
        self.start()
        return self

    def start(self):
        self.port_file.unlink(missing_ok=True)
        self.process = subprocess.Popen([*self.command, "--port", self.port], stdout=subprocess.DEVNULL)
        deadline = time.monotonic() + 30
        while not self.port_file.exists():
            if self.process.poll() is not None or time.monotonic() > deadline:
                self.process.kill()
                raise Failed("the local service did not start")
            time.sleep(0.02)
        self.port = self.port_file.read_text(encoding="ascii").strip()
        self.address = "http://127.0.0.1:" + self.port

    def kill_and_restart(self):
        """kill -9, and a new one over the same data at the same port."""
        self.process.kill()
        self.process.wait()
        self.start()

    def __exit__(self, *_):
        self.process.send_signal(signal.SIGTERM)
        if self.process.wait(timeout=30) != 0:
            raise Failed(f"the local service ended with status {self.process.returncode}")

    def parts_received(self):
        with urllib.request.urlopen(self.address + "/_dev/requests", timeout=30) as answer:
            requests = json.load(answer)["requests"]
        return sum(1 for request in requests if request["verb"] == "PUT" and request["path"].startswith("/_part/"))


class Quillbox:
    """The terminal host with a session of its own."""

    def __init__(self, program, address, folder):
        self.program = program
        self.environment = {
            **ENVIRONMENT,
            "QUILLBOX_HOST": address,
            "QUILLBOX_STATE": str(folder / "state"),
        }

    def run(self, *arguments, folder=None):
        """For people: what it prints goes straight to the terminal."""
        done = subprocess.run([self.program, *arguments], env=self.environment, cwd=folder, check=False)
        if done.returncode != 0:
            raise Failed(f"quillbox {' '.join(arguments[:2])} ended with status {done.returncode}")

    def call(self, operation, record):
        done = subprocess.run(
            [self.program, "--json", "call", operation, json.dumps(record)],
            env=self.environment, capture_output=True, text=True, check=False)
        if done.returncode != 0:
            raise Failed(f"quillbox call {operation}: {done.stdout.strip()} {done.stderr.strip()}")
        record = json.loads(done.stdout)["record"]
        if record.get("code", 0) != 0:
            raise Failed(f"{operation}: the service answered {record.get('code')} {record.get('msg')}")
        return record

    def sign_in(self):
        self.environment["QUILLBOX_TOKEN"] = self.call("getToken", {"authCode": "demo"})["accessToken"]

    def children(self, folder):
        cursor = None
        while True:
            page = {"pageSize": 500, **({"pageCursor": cursor} if cursor else {})}
            answer = self.call("filesList", {"type": "list", "parentFileId": folder, "pageInfo": page})
            yield from answer.get("files", [])
            cursor = answer.get("nextCursor")
            if not cursor:
                return


def step(text):
    print(f"\n== {text}", flush=True)


def counted(number, noun):
    return f"{number} {noun}{'' if number == 1 else 's'}"
