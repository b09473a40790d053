"""Records pentobi and shows the script: see scripts/demo."""

import pentobisession
from vantlesystem import Recording


def main():
    print(f"demo: vantle record -- {pentobisession.PROGRAM}", flush=True)
    with Recording(pentobisession.program()) as recording:
        window = recording.window(pentobisession.TITLE)
        pentobisession.play(recording, window, lambda text: print(f"demo: {text}", flush=True))
        status = recording.interrupt()
        if status != 0:
            raise SystemExit(f"demo: vantle ended with {status}:\n{recording.messages()}")
        print("\ndemo: the recorded script\n")
        print(recording.text(), end="")


if __name__ == "__main__":
    main()
