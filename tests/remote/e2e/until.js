// Waiting for something that comes in its own time.
const LONGEST_WAIT = 30_000;
const PAUSE = 20;

/** Asks `probe` until it answers something true, and answers that; fails with `what` after a time. */
export async function until(what, probe, longest = LONGEST_WAIT) {
  const end = Date.now() + longest;
  for (;;) {
    const answer = await probe();
    if (answer) {
      return answer;
    }
    if (Date.now() > end) {
      throw new Error(`waited in vain for ${what}`);
    }
    await new Promise((resume) => setTimeout(resume, PAUSE));
  }
}
