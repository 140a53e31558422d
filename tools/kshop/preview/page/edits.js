// The edits that go to the node, one at a time and in order. While one is under way a newer value of the same field
// replaces the older one that still waits, so a drag never lags behind, and its last value is never lost.

function sameField(a, b) {
  return (
    a.action === b.action &&
    a.type === b.type &&
    a.token === b.token &&
    a.channel === b.channel &&
    (a.action === "set" || a.action === "ramp")
  );
}

export class Edits {
  /** `send` does one request and promises its answer; `applied` hears each answer, before the edit's own promise. */
  constructor(send, applied) {
    this.send = send;
    this.applied = applied;
    this.waiting = [];
    this.busy = false;
  }

  /** Promises the answer of this edit, or of the one that replaced it. Fails with the server's sentence. */
  push(body) {
    return new Promise((resolve, reject) => {
      const last = this.waiting.at(-1);
      if (last && sameField(last.body, body)) {
        last.body = body;
        last.settle.push({ resolve, reject });
      } else {
        this.waiting.push({ body, settle: [{ resolve, reject }] });
      }
      this.pump();
    });
  }

  /** True while an edit is under way or waits. */
  get pending() {
    return this.busy || this.waiting.length > 0;
  }

  async pump() {
    if (this.busy || this.waiting.length === 0) return;
    this.busy = true;
    const { body, settle } = this.waiting.shift();
    try {
      const answer = await this.send(body);
      this.applied(answer, body);
      for (const { resolve } of settle) resolve(answer);
    } catch (error) {
      for (const { reject } of settle) reject(error);
    }
    this.busy = false;
    this.pump();
  }
}

let gestures = 0;
const here = crypto.getRandomValues(new Uint32Array(1))[0].toString(36); // another tab has other gestures

/** A name for what belongs together: the edits of one drag are one step of undo. */
export function newGesture() {
  gestures += 1;
  return `${here}.${gestures}`;
}
