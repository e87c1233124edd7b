#ifndef ROUNDINTERVAL_H
#define ROUNDINTERVAL_H

/**
 * The roundest interval that a measured one may be meant to be, in the unit of @p interval: a round number of
 * microseconds, or the inverse of a whole number of hertz.
 *
 * @param interval     microseconds, positive
 * @param uncertainty  how far from it the true value may be
 */
double roundInterval(double interval, double uncertainty);

#endif
