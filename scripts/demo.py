"""The main job and the backups on the embedded local service; scripts/demo builds the programs and calls this.

demo.py BIN_FOLDER PATH
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

from demo_backup import back_up
from demo_parts import Failed, Quillbox, Service, counted, step

ROOT_FOLDER = "root"


def files_below(path, above=frozenset()):
    """Links are followed, as an upload follows them: not to a folder above, and not to nowhere."""
    if path.is_file():
        return [path]
    inside = above | {path.resolve()}
    entries = [entry for entry in path.iterdir() if entry.is_file() or (entry.is_dir() and entry.resolve() not in inside)]
    return [file for entry in entries for file in files_below(entry, inside)]


def bring_back(quillbox, item, target):
    """Downloads a cloud file, or a cloud folder with all that it holds; gives the number of files."""
    if item.get("fileType") != "10":
        done = subprocess.run(
            [quillbox.program, "--json", "download", "--file-id", item["id"], "--to", target],
            env=quillbox.environment, capture_output=True, text=True, check=False)
        if done.returncode != 0:
            raise Failed(f"download of {item['fileName']}: {done.stdout.strip()} {done.stderr.strip()}")
        return 1
    target.mkdir()
    return sum(bring_back(quillbox, child, target / child["fileName"]) for child in quillbox.children(item["id"]))


def compare(original, copy):
    """Byte for byte; says what differs."""
    done = subprocess.run(["diff", "--recursive", "--brief", original, copy], capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise Failed("what came back differs: " + (done.stdout or done.stderr).strip())


def demo(programs, path, folder):
    files = files_below(path)
    size = sum(file.stat().st_size for file in files)
    with Service(programs / "quillboxd", folder) as service:
        step(f"The local service listens on {service.address}; signing in")
        quillbox = Quillbox(programs / "quillbox", service.address, folder)
        quillbox.sign_in()

        step(f"Uploading {path}: {counted(len(files), 'file')}, {size} bytes")
        began = time.monotonic()
        quillbox.run("upload", "--", path.name, folder=path.parent)
        upload_seconds = time.monotonic() - began
        parts = service.parts_received()

        step("What the cloud holds now")
        quillbox.run("ls")
        items = [item for item in quillbox.children(ROOT_FOLDER) if item["fileName"] == path.name]
        if len(items) != 1:
            raise Failed(f"{path.name} is not in the cloud folder")
        if path.is_dir():
            print(f"\n{path.name}/", flush=True)
            quillbox.run("ls", items[0]["id"])

        step("Bringing it back")
        began = time.monotonic()
        fetched = bring_back(quillbox, items[0], folder / "back")
        download_seconds = time.monotonic() - began
        if fetched != len(files):
            raise Failed(f"{counted(len(files), 'file')} went up, {fetched} came back")
        compare(path, folder / "back")
        print(f"{counted(fetched, 'file')} came back the same, byte for byte")

        step("Comparing with the cloud by size and SHA-256")
        quillbox.run("verify", "--parent", ROOT_FOLDER, "--", path.name, folder=path.parent)

        step("Uploading again")
        quillbox.run("upload", "--", path.name, folder=path.parent)
        moved = service.parts_received() - parts
        if moved != 0:
            raise Failed(f"the second upload moved {counted(moved, 'part')}")
        print("Nothing moved: the service had every file.")

        backed_up = back_up(quillbox, folder)

    megabytes = size / 1e6
    step("In short")
    print(f"{'':10}{'files':>8}{'bytes':>14}{'parts':>8}{'seconds':>10}{'MB/s':>10}")
    print(f"{'upload':10}{len(files):8}{size:14}{parts:8}{upload_seconds:10.2f}{megabytes / upload_seconds:10.1f}")
    print(f"{'download':10}{fetched:8}{size:14}{'':8}{download_seconds:10.2f}{megabytes / download_seconds:10.1f}")
    print(f"{'again':10}{len(files):8}{0:14}{moved:8}")
    print(f"Backed up besides: {backed_up}.")


def main(programs, path):
    folder = pathlib.Path(tempfile.mkdtemp(prefix="quillbox-demo-"))
    try:
        demo(pathlib.Path(programs).resolve(), pathlib.Path(path), folder)
        return 0
    except Failed as failure:
        print(f"\nThe demo failed: {failure}", file=sys.stderr)
        return 1
    except KeyboardInterrupt:
        return 130
    finally:
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
